#pragma once

#include "core/Scheduler.h"
#include "core/TimerHandle.h"

#include <QObject>
#include <functional>

namespace ostrel {

// Whether a desk moves, told from the heights it reports: a change of height is movement until
// the height has stood still for kStillAfter. The bus and the home-automation bridge both
// report "moving" this way, for moves the application did not start as well as for its own.
class HeightMovement {
public:
    static constexpr Scheduler::Duration kStillAfter{500};
    using Stopped = std::function<void()>;

    // `stopped` runs, while `context` lives, when a movement ends.
    HeightMovement(QObject* context, Stopped stopped);

    // The height now, in any unit that does not change with the display. The first one after
    // construction or reset() is news, not movement.
    void observe(double height);
    // Forgets the height and any movement, for another desk or session.
    void reset();
    bool isMoving() const { return m_moving; }

private:
    QObject* m_context;
    Stopped m_stopped;
    double m_lastHeight = 0.0;
    bool m_moving = false;
    TimerHandle m_still;
};

} // namespace ostrel
