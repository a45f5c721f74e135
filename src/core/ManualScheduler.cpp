#include "ManualScheduler.h"

namespace ostrel {

ManualScheduler::ManualScheduler(QDateTime wallStart) : m_wallStart(std::move(wallStart)) {}

QDateTime ManualScheduler::wallNow() const {
    return m_wallStart.addMSecs(m_now.count());
}

TimerHandle ManualScheduler::after(Duration delay, QObject* context, Job job) {
    auto entry =
        std::make_shared<Entry>(Entry{context, context != nullptr, delay, false, std::move(job)});
    return schedule(m_now + delay, std::move(entry));
}

TimerHandle ManualScheduler::every(Duration interval, QObject* context, Job job) {
    // A zero interval would never let time advance.
    const Duration step = std::max(interval, Duration(1));
    auto entry =
        std::make_shared<Entry>(Entry{context, context != nullptr, step, true, std::move(job)});
    return schedule(m_now + step, std::move(entry));
}

TimerHandle ManualScheduler::schedule(Duration due, std::shared_ptr<Entry> entry) {
    m_jobs.emplace(Key{due, m_sequence++}, entry);
    std::weak_ptr<Entry> weak = entry;
    return TimerHandle([this, weak] {
        const auto target = weak.lock();
        if (!target)
            return;
        target->repeating = false;
        std::erase_if(m_jobs, [&](const auto& item) { return item.second == target; });
    });
}

void ManualScheduler::advance(Duration delta) {
    const Duration end = m_now + delta;
    while (!m_jobs.empty() && m_jobs.begin()->first.first <= end) {
        auto node = m_jobs.extract(m_jobs.begin());
        const auto entry = node.mapped();
        m_now = node.key().first;
        if (entry->hasContext && !entry->context)
            continue;
        if (entry->repeating)
            m_jobs.emplace(Key{m_now + entry->interval, m_sequence++}, entry);
        entry->job();
    }
    m_now = end;
}

} // namespace ostrel
