#include "session/SleepGuard.h"

#include "platform/Platform.h"
#include "platform/SystemSleep.h"
#include "session/DeskLink.h"
#include "session/DeskSession.h"
#include "session/PlannedDisconnect.h"

namespace ostrel {

SleepGuard::SleepGuard(DeskSession& session, PlannedDisconnect& disconnect)
    : QObject(&session), m_session(session), m_disconnect(disconnect) {
    connect(&system(), &SystemSleep::coming, this, &SleepGuard::sleepComing);
    connect(&system(), &SystemSleep::resumed, this, &SleepGuard::resumed);
}

SleepGuard::~SleepGuard() {
    // No session, no desk to let go of.
    system().letGo();
}

SystemSleep& SleepGuard::system() {
    return Platform::get<SystemSleep>();
}

void SleepGuard::deskLinked() {
    m_asleep = false;
    system().holdOff();
}

void SleepGuard::sleepComing() {
    if (m_asleep || !m_session.isConnected()) {
        system().letGo();
        return;
    }
    m_asleep = true;
    m_disconnect.start([] { system().letGo(); });
}

void SleepGuard::resumed() {
    if (!m_asleep || m_session.isReleased())
        return;
    // Nothing was held over the sleep; the scan links the desk as after any lost link.
    m_session.link().reconnect();
}

} // namespace ostrel
