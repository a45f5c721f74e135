#include "session/DeskRelease.h"

#include "session/DeskLink.h"
#include "session/PlannedDisconnect.h"

namespace ostrel {

DeskRelease::DeskRelease(DeskLink& link, PlannedDisconnect& disconnect, QObject* parent)
    : QObject(parent), m_link(link), m_disconnect(disconnect) {}

void DeskRelease::releaseDesk() {
    if (m_released)
        return;
    m_released = true;
    m_link.stopLooking();
    m_disconnect.start();
    emit releasedChanged(true);
}

void DeskRelease::connectDesk() {
    if (!m_released)
        return;
    m_released = false;
    emit releasedChanged(false);
    m_link.reconnect();
}

void DeskRelease::toggle() {
    if (m_released)
        connectDesk();
    else
        releaseDesk();
}

void DeskRelease::end() {
    if (std::exchange(m_released, false))
        emit releasedChanged(false);
}

QString DeskRelease::actionText(bool released) {
    return released ? tr("Connect desk") : tr("Release desk");
}

QString DeskRelease::releasedText() {
    return tr("Desk released");
}

QString DeskRelease::releaseHint() {
    return tr("Let go of the desk, so that your phone or another computer can connect to it");
}

} // namespace ostrel
