#pragma once

namespace ostrel {

// Registers the real screens of the home window with the router: desk type, search,
// no-Bluetooth and desk control, the last with its settings pages.
class ScreenFactories {
public:
    static void registerAll();
};

} // namespace ostrel
