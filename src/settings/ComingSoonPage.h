#pragma once

#include "settings/OMSettingPage.h"

namespace ostrel {

// Stands in for a settings page that is not built yet: its title, a line saying so, a way back.
class ComingSoonPage : public OMSettingPage {
    Q_OBJECT
public:
    ComingSoonPage(DeskControlVC* fatherVC, const QString& title);
};

} // namespace ostrel
