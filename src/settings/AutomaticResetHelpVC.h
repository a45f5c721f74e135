#pragma once

#include "settings/SettingHelpPage.h"

namespace ostrel {

// How the desk is reset by hand when it asks for it.
class AutomaticResetHelpVC : public SettingHelpPage {
    Q_OBJECT
public:
    explicit AutomaticResetHelpVC(DeskControlVC* fatherVC);
};

} // namespace ostrel
