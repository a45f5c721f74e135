#pragma once

#include "Tour.h"
#include "TourNavigator.h"

#include <deque>

namespace ostrel {

class AppDelegate;
class SampleActivity;

// The tour's steps on the control screen and around it, in the order a user meets them.
class ControlTour {
public:
    ControlTour(const TourNavigator& navigator, AppDelegate& delegate, SampleActivity& sample);

    // The search, the desk types, Bluetooth off, then binding a desk, moving it and the preset
    // save sheet.
    std::deque<Step> searchAndControl() const;
    // The activity page as a fresh installation shows it, opened from today's standing time;
    // then over a month of days with moves.
    std::deque<Step> activity() const;
    // The keyboard's marks, the pressed state, the go-to-height dialog before and during a
    // move, a toast, the picked colour's mark, the tray menu and the About box.
    std::deque<Step> keyboardAndTray() const;
    // The error screen the desk's first fault opens, then the status line for an error code,
    // the child lock and a reset request, each injected on the desk.
    std::deque<Step> faults() const;
    // The desk let go of for the phone app, connected again, then its link lost, which ends
    // the session.
    std::deque<Step> releaseAndLinkLoss() const;
    // Under a Wayland compositor: the control screen with a height, and the shortcut page,
    // which there offers the commands to bind in the desktop's own settings when no portal
    // offers global shortcuts.
    std::deque<Step> wayland() const;

private:
    const TourNavigator& m_nav;
    AppDelegate& m_delegate;
    SampleActivity& m_sample;
};

} // namespace ostrel
