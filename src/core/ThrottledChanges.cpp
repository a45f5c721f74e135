#include "core/ThrottledChanges.h"

namespace ostrel {

ThrottledChanges::ThrottledChanges(Scheduler::Duration interval, QObject* context, Send send)
    : m_interval(interval), m_context(context), m_send(std::move(send)) {}

void ThrottledChanges::update(const QVariantMap& values) {
    for (auto it = values.begin(); it != values.end(); ++it) {
        if (m_announced.value(it.key()) != it.value())
            m_pending.insert(it.key(), it.value());
        else
            m_pending.remove(it.key());
    }
    if (!m_coolingDown)
        flush();
}

void ThrottledChanges::reset(const QVariantMap& announced) {
    m_announced = announced;
    m_pending.clear();
    m_cooldown.cancel();
    m_coolingDown = false;
}

// Sends what changed, then waits out the interval; its end sends what changed meanwhile.
void ThrottledChanges::flush() {
    if (m_pending.isEmpty())
        return;
    const QVariantMap changed = std::exchange(m_pending, {});
    m_announced.insert(changed);
    m_coolingDown = true;
    m_cooldown = Scheduler::instance().after(m_interval, m_context, [this] {
        m_coolingDown = false;
        flush();
    });
    m_send(changed);
}

} // namespace ostrel
