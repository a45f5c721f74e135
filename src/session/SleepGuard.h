#pragma once

#include "core/Scheduler.h"
#include "core/TimerHandle.h"

#include <QObject>

namespace ostrel {

class DeskSession;
class SystemSleep;

// Lets go of the desk before the system sleeps or shuts down, and links it again after wake.
// While a desk is linked the system is held off with a delay lock; when sleep comes every key
// is released and every movement ends, the link goes once the desk has answered a poll with no
// key, and only then is the lock let go. The disconnect is the session's own: no alert, the
// screen stays. After wake the session's reconnection scan runs with nothing held.
class SleepGuard : public QObject {
    Q_OBJECT
public:
    // The longest wait for the link to go before the system is let go anyway.
    static constexpr Scheduler::Duration kDisconnectLimit{3000};

    explicit SleepGuard(DeskSession& session);
    ~SleepGuard() override;

    // The desk is linked: hold the system off from now on.
    void deskLinked();
    // Whether the link is down because the system sleeps.
    bool isAsleep() const { return m_asleep; }
    // The link is down; a sleep waiting for it goes on.
    void linkGone();

private:
    void sleepComing();
    void resumed();
    void letLinkGo();
    static SystemSleep& system();

    DeskSession& m_session;
    bool m_asleep = false;
    TimerHandle m_disconnectWait;
};

} // namespace ostrel
