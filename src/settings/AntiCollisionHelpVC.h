#pragma once

#include "settings/SettingHelpPage.h"

namespace ostrel {

// What anti-collision does and how the sensitivity levels differ.
class AntiCollisionHelpVC : public SettingHelpPage {
    Q_OBJECT
public:
    explicit AntiCollisionHelpVC(DeskControlVC* fatherVC);
};

} // namespace ostrel
