#pragma once

#include "core/Scheduler.h"

#include <QObject>
#include <QString>

namespace ostrel {

class DesktopNotifications;
class OMTimeManager;
class Presence;

// The sit-stand countdown as the control screen shows it, and what happens when it runs out: one
// desktop notification and one in-app alert per round, answered from either. It follows the
// shared counter through its notifications; the screen only draws what the signals say.
//
// While the user is away the countdown waits (unless the user chose otherwise) and on return
// starts again from the full interval; a round that ends while nobody is there reminds no one
// and is not kept for the return: a new round starts instead.
class SitStandReminder : public QObject {
    Q_OBJECT
public:
    // Lets the last tick's evaluation finish before the counter is stopped and reset.
    static constexpr Scheduler::Duration kStopDelay{300};

    SitStandReminder(DesktopNotifications& notifications, Presence& presence,
                     QObject* parent = nullptr);

    // Seconds a round lasts for the counter's interval kind; an unknown kind ends at once.
    static int countdownLength(int type, int totalMinutes);
    // "mm:ss", or "hh:mm:ss" from an hour on.
    static QString getMMSSFromSS(int seconds);

    QString labelText() const { return m_label; }
    bool isCountdownShown() const { return m_shown; }
    bool havePresntSitNotify() const { return m_havePresntSitNotify; }

    // The end-of-countdown check for `elapsed` seconds.
    void setTimeLabelWithTime(int elapsed);
    // The answer to the reminder: another round, or none; either way both reminders go.
    void actionNotificationSetWithIsRepeat(bool repeat);
    // The clear button: the countdown stops and the reminder and its sound are switched off.
    void actionClearClock();
    // The desktop notification's answer, by the title of the clicked button.
    void answerNotification(const QString& buttonTitle);
    // The shown height changed: in repeating mode a movement after the end starts the next round.
    void deskMoved();
    void presenceChanged(bool present);
    // The stored setting "Pause reminders while I'm away".
    static bool pausesWhileAway();

signals:
    void countdownChanged(const QString& label, bool shown);
    // The in-app alert: open it (or reconfigure the open one), or take it away.
    void alertRequested(bool isRepeat);
    void alertDismissed();

private:
    void registerObservers();
    void timeManagerStart();
    void timeManagerStop();
    void timeManagerRunning(int elapsed);
    void remind();
    void drop();
    // This round has ended: the counter stops and goes back to 0 a moment later.
    void finishRound();
    void showCountdown(bool shown);
    void setLabel(const QString& label);
    void removeReminders();
    static OMTimeManager& counter();

    DesktopNotifications& m_notifications;
    QString m_label;
    bool m_shown = false;
    bool m_havePresntSitNotify = false;
    bool m_away = false;
    // A round ended unseen while the user was away.
    bool m_dropped = false;
    TimerHandle m_finishing;
};

} // namespace ostrel
