#pragma once

#include <QString>
#include <functional>

class QObject;

namespace ostrel {

// Moves the home window from one screen to the next. Screens replace one another only through
// the router; every move also brings the home window to the front.
class HomeNavigator {
public:
    static void show(const QString& screen);
    static void bringHomeToFront();
    // Leaves the current desk behind, then shows the search screen, or the no-Bluetooth screen
    // when the radio is off.
    static void actionPushToSearchVC();
    // Runs `step` on the next turn of the main loop (dropped if `context` dies first), so that
    // a screen is never replaced from inside one of its own event handlers.
    static void later(QObject* context, std::function<void()> step);
};

} // namespace ostrel
