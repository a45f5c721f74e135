#pragma once

#include "core/Scheduler.h"

#include <QObject>

namespace ostrel {

// A movement started from a global hot key: no finger holds a button, so it needs stops of
// its own. The stall watchdog ends it when the height has not changed for a second.
class HotKeyMovement : public QObject {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kStallStep{1000};

    explicit HotKeyMovement(QObject* parent = nullptr);

    bool isMoving() const { return m_isMoving; }
    // Called on every height report while the session runs.
    void globalKeyMoving(float currentHeight);
    // Ends a hot-key movement (a fault, a lock, a reset); does nothing when none runs.
    void globalKeyStopUpDown();
    // Forgets the movement without touching the key; the session releases keys itself.
    void reset();

private:
    void stop();

    bool m_isMoving = false;
    float m_tempHeight = 0.0f;
    Scheduler::Duration m_tempDate{};
};

} // namespace ostrel
