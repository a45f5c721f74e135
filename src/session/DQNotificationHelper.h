#pragma once

#include "core/Scheduler.h"

#include <QObject>
#include <QString>

namespace ostrel {

// Notifications as the system settings' `push` switch has them at launch, and the reading of
// short HTML notices as plain text.
class DQNotificationHelper : public QObject {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kPollInterval{6000};

    static DQNotificationHelper& shareInstance();

    // Starts the poll for new notices; no notice source is wired to it yet, so a tick does
    // nothing.
    void openNotification();
    void closeNotification();
    bool isOpen() const { return !m_timer.isNull(); }

    // Plain text of a short HTML notice: the last four characters (a closing "</p>") dropped,
    // then "&nbsp;" as a space, "</p>" as a line break and every other tag removed.
    static QString getZZwithString(const QString& html);

private:
    void actionGetNewNotification() {}

    TimerHandle m_timer;
};

} // namespace ostrel
