#pragma once

#include <QObject>

namespace ostrel {

class DeskSession;
class PlannedDisconnect;
class SystemSleep;

// Lets go of the desk before the system sleeps or shuts down, and links it again after wake.
// While a desk is linked the system is held off with a delay lock; when sleep comes the session
// lets go of the desk as it planned (keys released, the link gone once the desk heard no key),
// and only then is the lock let go. After wake the session's reconnection scan runs with nothing
// held. A desk the user released stays released: nothing to let go of, nothing to link.
class SleepGuard : public QObject {
    Q_OBJECT
public:
    SleepGuard(DeskSession& session, PlannedDisconnect& disconnect);
    ~SleepGuard() override;

    // The desk is linked: hold the system off from now on.
    void deskLinked();

private:
    void sleepComing();
    void resumed();
    static SystemSleep& system();

    DeskSession& m_session;
    PlannedDisconnect& m_disconnect;
    bool m_asleep = false;
};

} // namespace ostrel
