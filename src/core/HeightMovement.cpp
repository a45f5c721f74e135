#include "core/HeightMovement.h"

namespace ostrel {

HeightMovement::HeightMovement(QObject* context, Stopped stopped)
    : m_context(context), m_stopped(std::move(stopped)) {}

void HeightMovement::observe(double height) {
    if (m_lastHeight > 0 && height != m_lastHeight) {
        m_moving = true;
        m_still.cancel();
        m_still = Scheduler::instance().after(kStillAfter, m_context, [this] {
            m_moving = false;
            m_stopped();
        });
    }
    m_lastHeight = height;
}

void HeightMovement::reset() {
    m_lastHeight = 0.0;
    m_moving = false;
    m_still.cancel();
}

} // namespace ostrel
