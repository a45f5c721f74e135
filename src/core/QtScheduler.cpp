#include "QtScheduler.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

namespace ostrel {

QtScheduler::QtScheduler() {
    m_clock.start();
}

Scheduler::Duration QtScheduler::now() const {
    return Duration(m_clock.elapsed());
}

QDateTime QtScheduler::wallNow() const {
    return QDateTime::currentDateTime();
}

TimerHandle QtScheduler::after(Duration delay, QObject* context, Job job) {
    if (delay > Duration::zero())
        return start(delay, true, context, std::move(job));
    // The next pass of the event loop needs no timer: the desk's height comes this way with
    // every display frame.
    auto wanted = std::make_shared<bool>(true);
    QMetaObject::invokeMethod(
        context ? context : QCoreApplication::instance(),
        [wanted, job = std::move(job)] {
            if (*wanted)
                job();
        },
        Qt::QueuedConnection);
    return TimerHandle([wanted] { *wanted = false; });
}

TimerHandle QtScheduler::every(Duration interval, QObject* context, Job job) {
    return start(interval, false, context, std::move(job));
}

TimerHandle QtScheduler::start(Duration interval, bool singleShot, QObject* context, Job job) {
    // Parenting the timer to the context ties its life to the context's.
    QObject* owner = context ? context : QCoreApplication::instance();
    auto* timer = new QTimer(owner);
    timer->setSingleShot(singleShot);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, singleShot, job = std::move(job)] {
        if (singleShot)
            timer->deleteLater();
        job();
    });
    timer->start(interval);
    QPointer<QTimer> guard(timer);
    return TimerHandle([guard] {
        if (guard) {
            guard->stop();
            guard->deleteLater();
        }
    });
}

} // namespace ostrel
