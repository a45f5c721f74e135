#pragma once

namespace ostrel {

class DeskControlVC;

// Hangs the settings on a control screen: the gear opens the settings menu, the light-strip
// button the light strip page, the presets help's "Customize" the presets and anti-collision
// page, and today's standing time the activity page, each on the screen's view stack.
class SettingsNavigation {
public:
    static void attach(DeskControlVC& control);
};

} // namespace ostrel
