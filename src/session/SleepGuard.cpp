#include "session/SleepGuard.h"

#include "platform/Platform.h"
#include "platform/SystemSleep.h"
#include "session/DeskLink.h"
#include "session/DeskSession.h"
#include "session/HeldKeyOwner.h"
#include "transport/RBBluetoothManager.h"

#include <QPointer>

namespace ostrel {

SleepGuard::SleepGuard(DeskSession& session) : QObject(&session), m_session(session) {
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
    QPointer<SleepGuard> self(this);
    HeldKeyOwner::instance().releaseThen([self] {
        if (self)
            self->letLinkGo();
    });
}

void SleepGuard::letLinkGo() {
    m_disconnectWait = Scheduler::instance().after(kDisconnectLimit, this, [this] { linkGone(); });
    RBBluetoothManager::sharedInstance().disconnectAllPeripheral();
}

void SleepGuard::linkGone() {
    if (!m_asleep)
        return;
    m_disconnectWait.cancel();
    system().letGo();
}

void SleepGuard::resumed() {
    if (!m_asleep)
        return;
    m_disconnectWait.cancel();
    // Nothing was held over the sleep; the scan links the desk as after any lost link.
    m_session.link().reconnect();
}

} // namespace ostrel
