#pragma once

#include "core/TimerHandle.h"
#include "platform/PresenceSource.h"

#include <memory>
#include <xcb/xcb.h>

namespace ostrel {

// The X server's own idle time (the MIT-SCREEN-SAVER extension): time since the last input on
// any client. The server only answers when asked, so it is asked when the limit would be reached
// and, while the user is away, every kAwayPoll to see the first input.
class X11IdleTime : public PresenceSource {
    Q_OBJECT
public:
    static constexpr Duration kAwayPoll{1000};
    static constexpr Duration kShortestLimit = 2 * kAwayPoll;

    // Null unless the application runs on an X server that has the extension.
    static std::unique_ptr<X11IdleTime> create();

    X11IdleTime(xcb_connection_t* connection, xcb_window_t root, QObject* parent = nullptr);

    void setIdleLimit(Duration idle) override;

private:
    void check();

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    Duration m_limit{0};
    TimerHandle m_next;
};

} // namespace ostrel
