#pragma once

#include "core/Scheduler.h"
#include "core/TimerHandle.h"
#include "session/HeldKeyOwner.h"

#include <QObject>

namespace ostrel {

// A movement started from a global hot key: no finger holds a button, so it needs stops of
// its own. The stall watchdog ends it when the height has not changed for a second, and a
// timer ends it when the desk has sent no height for two seconds (a desk that stops reporting
// would otherwise keep the key held).
class HotKeyMovement : public QObject {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kStallStep{1000};
    static constexpr Scheduler::Duration kSilenceLimit{2000};

    explicit HotKeyMovement(QObject* parent = nullptr);

    bool isMoving() const { return m_isMoving; }
    // Any hot key: the watchdog starts its count again.
    void restartWatch();
    // Up or Down (command type 1 or 2): starts moving, or ends the movement that runs, whichever
    // way it goes.
    void toggle(int type);
    // Called on every height report while the session runs.
    void globalKeyMoving(float currentHeight);
    // Ends a hot-key movement (a fault, a lock, a reset); does nothing when none runs.
    void globalKeyStopUpDown();

private:
    void stop();
    // Forgets the movement; the key is no longer its own.
    void reset();
    void armSilenceTimer();

    bool m_isMoving = false;
    float m_tempHeight = 0.0f;
    Scheduler::Duration m_tempDate{};
    TimerHandle m_silence;
    HeldKeyOwner::Claim m_claim;
};

} // namespace ostrel
