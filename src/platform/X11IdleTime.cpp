#include "platform/X11IdleTime.h"

#include "core/Scheduler.h"

#include <QGuiApplication>
#include <algorithm>
#include <cstdlib>
#include <xcb/screensaver.h>

namespace ostrel {

std::unique_ptr<X11IdleTime> X11IdleTime::create() {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t* connection = x11 ? x11->connection() : nullptr;
    if (!connection)
        return nullptr;
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection, &xcb_screensaver_id);
    if (!extension || !extension->present)
        return nullptr;
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    return std::make_unique<X11IdleTime>(connection, screen->root);
}

X11IdleTime::X11IdleTime(xcb_connection_t* connection, xcb_window_t root, QObject* parent)
    : PresenceSource(parent), m_connection(connection), m_root(root) {}

void X11IdleTime::setIdleLimit(Duration idle) {
    // An input is seen by the idle time being under the limit at the next look.
    m_limit = std::max(idle, kShortestLimit);
    m_next.cancel();
    check();
}

void X11IdleTime::check() {
    xcb_screensaver_query_info_reply_t* reply = xcb_screensaver_query_info_reply(
        m_connection, xcb_screensaver_query_info(m_connection, m_root), nullptr);
    if (!reply) { // the server is gone: nothing more to tell
        setAway(false);
        return;
    }
    const Duration idle{reply->ms_since_user_input};
    std::free(reply);
    setAway(idle >= m_limit);
    m_next = Scheduler::instance().after(isAway() ? kAwayPoll : m_limit - idle, this,
                                         [this] { check(); });
}

} // namespace ostrel
