#pragma once

#include <chrono>
#include <memory>

namespace ostrel {

class ActivityService;
class AppDelegate;
class DemoDesks;
class HomeAutomationBridge;

// The application between its QApplication and the end of its event loop: the shell, the demo
// desks when asked for, the Home Assistant bridge, termination from the menu or by a signal, and
// the orderly release of the desk link once the loop has ended.
class AppRunner {
public:
    // How long quitting waits for the desk to hear "no key" before the link goes.
    static constexpr std::chrono::milliseconds kReleaseLimit{300};

    explicit AppRunner(bool demo);
    ~AppRunner();

    AppDelegate& delegate() const { return *m_delegate; }
    DemoDesks* demo() const { return m_demo.get(); }
    // The standing-time record, from launch until the loop ends.
    ActivityService* activity() const { return m_activity.get(); }

    // Launches the shell and runs the event loop; returns its exit status.
    int exec();

private:
    // A desk moves while its polls are answered with a key. The session released its keys as
    // the loop ended; losing the link would stop the desk too, but only after the desk's own
    // time-out, and a link BlueZ keeps open after we exit would not be lost at all: so the desk
    // hears the released key once before the link is let go.
    static void letDeskHearReleasedKey();

    std::unique_ptr<DemoDesks> m_demo;
    std::unique_ptr<AppDelegate> m_delegate;
    std::unique_ptr<ActivityService> m_activity;
    std::unique_ptr<HomeAutomationBridge> m_homeAutomation;
};

} // namespace ostrel
