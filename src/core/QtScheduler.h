#pragma once

#include "Scheduler.h"

#include <QElapsedTimer>

namespace ostrel {

// Real time: QTimer on the thread of the context object (the main thread in this application).
class QtScheduler final : public Scheduler {
public:
    QtScheduler();

    Duration now() const override;
    QDateTime wallNow() const override;
    TimerHandle after(Duration delay, QObject* context, Job job) override;
    TimerHandle every(Duration interval, QObject* context, Job job) override;

private:
    TimerHandle start(Duration interval, bool singleShot, QObject* context, Job job);

    QElapsedTimer m_clock;
};

} // namespace ostrel
