#pragma once

#include "core/Scheduler.h"
#include "core/TimerHandle.h"

#include <QObject>
#include <QVariantMap>
#include <functional>

namespace ostrel {

// Announces changes of a set of named values no more often than once an interval: a change goes
// out at once when nothing went out within the interval, else at the interval's end, with the
// latest values. A value that changes and changes back before then is not announced at all. A
// moving desk changes its height on every poll; its listeners hear it a few times a second.
class ThrottledChanges {
public:
    using Send = std::function<void(const QVariantMap& changed)>;

    // `send` runs only while `context` lives.
    ThrottledChanges(Scheduler::Duration interval, QObject* context, Send send);

    // The values as they are now; those that differ from what was announced are announced.
    void update(const QVariantMap& values);
    // Forgets what was announced, the listeners having been told `announced` by other means (or
    // nothing): the next update announces every other value at once.
    void reset(const QVariantMap& announced = {});

private:
    void flush();

    Scheduler::Duration m_interval;
    QObject* m_context;
    Send m_send;
    QVariantMap m_announced;
    QVariantMap m_pending;
    bool m_coolingDown = false;
    TimerHandle m_cooldown;
};

} // namespace ostrel
