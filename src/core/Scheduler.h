#pragma once

#include "TimerHandle.h"

#include <QDateTime>
#include <QObject>
#include <chrono>
#include <functional>

namespace ostrel {

// The one source of time for the whole application. Production uses QtScheduler; tests install a
// ManualScheduler so that a 30 s scan or a 45 min reminder runs in virtual time.
//
// A job given a context object is dropped when that object dies, so callbacks never outlive
// the screen or service that scheduled them. A null context means "for the life of the process".
class Scheduler {
public:
    using Duration = std::chrono::milliseconds;
    using Job = std::function<void()>;

    virtual ~Scheduler() = default;

    virtual Duration now() const = 0;      // steady, for measuring intervals
    virtual QDateTime wallNow() const = 0; // calendar time, for dates stored in records
    virtual TimerHandle after(Duration delay, QObject* context, Job job) = 0;
    virtual TimerHandle every(Duration interval, QObject* context, Job job) = 0;

    // The process-wide scheduler: a QtScheduler unless a test or tool installed another.
    static Scheduler& instance();
    // Installs `scheduler` (not owned; nullptr restores the default) and returns the previous one.
    static Scheduler* setInstance(Scheduler* scheduler);
};

} // namespace ostrel
