#include "sim/DeskMotor.h"

#include "core/Scheduler.h"

#include <algorithm>

namespace ostrel {

DeskMotor::DeskMotor(double speedCmPerSecond, int minHeight, int maxHeight, int startHeight)
    : m_tenthsPerMs(speedCmPerSecond * 10.0 / 1000.0), m_minHeight(minHeight),
      m_maxHeight(std::max(minHeight, maxHeight)),
      m_height(std::clamp(startHeight, m_minHeight, m_maxHeight)),
      m_updatedAt(Scheduler::instance().now()) {}

void DeskMotor::update() {
    const auto now = Scheduler::instance().now();
    const auto elapsed = static_cast<double>((now - m_updatedAt).count());
    m_updatedAt = now;
    if (!isMoving())
        return;
    const double end = m_hasTarget ? m_target : (m_direction > 0 ? m_maxHeight : m_minHeight);
    const double step = m_tenthsPerMs * elapsed;
    if (std::abs(end - m_height) <= step) {
        m_height = end;
        halt();
    } else {
        m_height += m_direction * step;
    }
}

void DeskMotor::run(int direction) {
    update();
    m_hasTarget = false;
    const bool atEnd = direction > 0 ? m_height >= m_maxHeight : m_height <= m_minHeight;
    m_direction = atEnd ? 0 : (direction > 0) - (direction < 0);
}

void DeskMotor::runTo(int target) {
    update();
    m_target = std::clamp(target, m_minHeight, m_maxHeight);
    m_hasTarget = true;
    m_direction = m_target > m_height ? 1 : (m_target < m_height ? -1 : 0);
}

void DeskMotor::stop() {
    update();
    halt();
}

void DeskMotor::halt() {
    m_direction = 0;
    m_hasTarget = false;
}

} // namespace ostrel
