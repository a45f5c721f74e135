#include "session/OMTimeManager.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "core/Scheduler.h"

namespace ostrel {

OMTimeManager& OMTimeManager::sharedInstance() {
    static OMTimeManager manager;
    return manager;
}

void OMTimeManager::start() {
    if (isRunning())
        return;
    m_timer = Scheduler::instance().every(kTick, this, [this] { timerStartRunning(); });
    NotificationCenter::defaultCenter().post(QString::fromLatin1(notifications::kTimeManagerStart));
}

void OMTimeManager::stop() {
    m_timer.cancel();
    m_timer = {};
    NotificationCenter::defaultCenter().post(QString::fromLatin1(notifications::kTimeManagerStop));
}

void OMTimeManager::timerStartRunning() {
    if (m_paused)
        return;
    ++m_time;
    NotificationCenter::defaultCenter().post(
        QString::fromLatin1(notifications::kTimeManagerRunning), m_time);
}

} // namespace ostrel
