#pragma once

#include "Scheduler.h"

#include <QPointer>
#include <map>
#include <memory>

namespace ostrel {

// Virtual time for tests, benchmarks and tools. Nothing runs until advance() is called; jobs then
// run in order of due time (ties in order of scheduling), with now() set to each job's due time.
class ManualScheduler final : public Scheduler {
public:
    explicit ManualScheduler(QDateTime wallStart = QDateTime(QDate(2024, 1, 1), QTime(9, 0)));

    Duration now() const override { return m_now; }
    QDateTime wallNow() const override;
    TimerHandle after(Duration delay, QObject* context, Job job) override;
    TimerHandle every(Duration interval, QObject* context, Job job) override;

    // Moves virtual time forward by `delta`, running every job that falls due on the way,
    // including jobs scheduled by those jobs.
    void advance(Duration delta);
    // Runs the jobs due now without moving time (e.g. zero-delay hops).
    void runDue() { advance(Duration::zero()); }
    // Sets the wall clock forward or back without steady time passing (a time zone change, an
    // NTP correction).
    void shiftWall(Duration delta) { m_wallStart = m_wallStart.addMSecs(delta.count()); }
    std::size_t pendingCount() const { return m_jobs.size(); }

private:
    struct Entry {
        QPointer<QObject> context;
        bool hasContext = false;
        Duration interval{};
        bool repeating = false;
        Job job;
    };
    using Key = std::pair<Duration, std::uint64_t>;

    TimerHandle schedule(Duration due, std::shared_ptr<Entry> entry);

    Duration m_now{};
    QDateTime m_wallStart;
    std::uint64_t m_sequence = 0;
    std::map<Key, std::shared_ptr<Entry>> m_jobs;
};

} // namespace ostrel
