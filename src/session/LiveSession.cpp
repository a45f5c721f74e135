#include "session/LiveSession.h"

#include "session/DeskSession.h"

namespace ostrel {

LiveSession& LiveSession::instance() {
    static LiveSession live;
    return live;
}

void LiveSession::setCurrent(DeskSession* session) {
    if (m_current == session)
        return;
    m_current = session;
    emit currentChanged(session);
}

void LiveSession::withdraw(DeskSession* session) {
    if (m_current == session)
        setCurrent(nullptr);
}

} // namespace ostrel
