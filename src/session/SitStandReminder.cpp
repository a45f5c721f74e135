#include "session/SitStandReminder.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "platform/DesktopNotifications.h"
#include "platform/Presence.h"
#include "session/OMTimeManager.h"
#include "store/CurrentDeviceStore.h"
#include "store/DQDataSessionHelper.h"
#include "store/Object_SystemSetting.h"
#include "store/RecordDictionary.h"

#include <utility>

namespace ostrel {

namespace {

constexpr int kSecondsPerMinute = 60;
constexpr int kSecondsPerHour = 3600;
const QString kEndedLabel = QStringLiteral("00:00");

} // namespace

SitStandReminder::SitStandReminder(DesktopNotifications& notifications, Presence& presence,
                                   QObject* parent)
    : QObject(parent), m_notifications(notifications) {
    connect(&m_notifications, &DesktopNotifications::answered, this,
            &SitStandReminder::answerNotification);
    connect(&presence, &Presence::presentChanged, this, &SitStandReminder::presenceChanged);
    m_away = !presence.isPresent();
    counter().setPaused(m_away && pausesWhileAway());
    registerObservers();
}

void SitStandReminder::registerObservers() {
    NotificationCenter& center = NotificationCenter::defaultCenter();
    const auto observe = [this, &center](const char* name, auto handler) {
        center.addObserver(this, QString::fromLatin1(name), handler);
    };
    observe(notifications::kTimeManagerStart, [this](const QVariant&) { timeManagerStart(); });
    observe(notifications::kTimeManagerStop, [this](const QVariant&) { timeManagerStop(); });
    observe(notifications::kTimeManagerRunning,
            [this](const QVariant& elapsed) { timeManagerRunning(elapsed.toInt()); });
    // The session is over: the counter is no longer this screen's.
    observe(notifications::kDeleteCurrentDevice,
            [this](const QVariant&) { NotificationCenter::defaultCenter().removeObserver(this); });
}

OMTimeManager& SitStandReminder::counter() {
    return OMTimeManager::sharedInstance();
}

int SitStandReminder::countdownLength(int type, int totalMinutes) {
    if (OMTimeManager::isFixedType(type))
        return OMTimeManager::kFixedMinutes[std::size_t(type)] * kSecondsPerMinute;
    if (type == OMTimeManager::kCustomType)
        return totalMinutes * kSecondsPerMinute;
    return 0;
}

QString SitStandReminder::getMMSSFromSS(int seconds) {
    const int hours = seconds / kSecondsPerHour;
    const int minutes = (seconds - kSecondsPerHour * hours) / kSecondsPerMinute;
    const QString hh = QString::asprintf("%02d", hours);
    const QString mm = QString::asprintf("%02d", minutes);
    const QString ss = QString::asprintf("%02d", seconds % kSecondsPerMinute);
    return hh == u"00" ? QStringLiteral("%1:%2").arg(mm, ss)
                       : QStringLiteral("%1:%2:%3").arg(hh, mm, ss);
}

// ---- Counter ----

void SitStandReminder::timeManagerStart() {
    m_havePresntSitNotify = false;
    showCountdown(true);
    setTimeLabelWithTime(counter().time());
}

void SitStandReminder::timeManagerStop() {
    showCountdown(false);
    setTimeLabelWithTime(counter().time());
}

void SitStandReminder::timeManagerRunning(int elapsed) {
    showCountdown(true);
    setTimeLabelWithTime(elapsed);
}

void SitStandReminder::setTimeLabelWithTime(int elapsed) {
    const int length = countdownLength(counter().type(), counter().total());
    if (length > elapsed) {
        setLabel(getMMSSFromSS(length - elapsed));
        return;
    }
    setLabel(kEndedLabel);
    if (!m_havePresntSitNotify) {
        if (m_away)
            drop();
        else
            remind();
    }
    showCountdown(false);
}

void SitStandReminder::remind() {
    OMBluetoothModel record = CurrentDeviceStore::load();
    const bool repeat = record.isRepeat == 1;
    const bool sound = record.notificationsound == "1";
    if (repeat) {
        m_notifications.notify({tr("Reminder"), tr("Whether to continue the reminder?"),
                                tr("Remind Me Later"), tr("Stop"), sound});
    } else {
        m_notifications.notify({tr("Movement Reminder"), tr("Please stand/sit for a while"),
                                tr("Now"), QString(), sound});
        // Written before the alert shows: quitting while it is up keeps the reminder off.
        record.sitOrStand = "0";
        CurrentDeviceStore::save(record);
    }
    // Handed to the desktop, or to the alert alone when there is no server: either way this
    // round has reminded.
    finishRound();
    emit alertRequested(repeat);
}

// Not queued for the return: coming back starts a new round instead.
void SitStandReminder::drop() {
    m_dropped = true;
    finishRound();
}

void SitStandReminder::finishRound() {
    m_havePresntSitNotify = true;
    // The stop re-runs this check with the old count; the flag keeps it from ending twice.
    m_finishing = Scheduler::instance().after(kStopDelay, this, [] {
        counter().stop();
        counter().setTime(0);
    });
}

// ---- Answers ----

void SitStandReminder::actionNotificationSetWithIsRepeat(bool repeat) {
    if (repeat) {
        counter().start();
        m_havePresntSitNotify = false;
    }
    removeReminders();
}

void SitStandReminder::answerNotification(const QString& buttonTitle) {
    if (buttonTitle == tr("Remind Me Later"))
        actionNotificationSetWithIsRepeat(true);
    else if (buttonTitle == tr("Now") || buttonTitle == tr("Stop"))
        actionNotificationSetWithIsRepeat(false);
}

void SitStandReminder::removeReminders() {
    m_notifications.removeAllDelivered();
    emit alertDismissed();
}

void SitStandReminder::actionClearClock() {
    counter().stop();
    counter().setTime(0);
    // The sound goes with the reminder, on purpose: switching it on again turns both on.
    OMBluetoothModel record = CurrentDeviceStore::load();
    record.sitOrStand = "0";
    record.notificationsound = "0";
    CurrentDeviceStore::save(record);
}

void SitStandReminder::deskMoved() {
    if (m_shown)
        return; // a running countdown was restarted by the movement itself
    const OMBluetoothModel record = CurrentDeviceStore::load();
    if (record.sitOrStand != "1" || record.isRepeat != 1)
        return;
    counter().start();
    m_havePresntSitNotify = false;
    removeReminders();
}

// ---- Presence ----

bool SitStandReminder::pausesWhileAway() {
    return fromPropertyForm<Object_SystemSetting>(DQDataSessionHelper::userGetSystemSettinginfo())
               .pauseaway != "0";
}

void SitStandReminder::presenceChanged(bool present) {
    m_away = !present;
    if (m_away) {
        counter().setPaused(pausesWhileAway());
        return;
    }
    const bool paused = counter().isPaused();
    counter().setPaused(false);
    if (std::exchange(m_dropped, false)) {
        // The unseen round is over, even when its stop is still to come.
        m_finishing.cancel();
        counter().setTime(0);
        counter().stop();
        if (CurrentDeviceStore::load().sitOrStand == "1")
            counter().start();
    } else if (paused && counter().isRunning()) {
        counter().setTime(0);
        setTimeLabelWithTime(0);
    }
}

// ---- Display ----

void SitStandReminder::showCountdown(bool shown) {
    if (shown == m_shown)
        return;
    m_shown = shown;
    emit countdownChanged(m_label, m_shown);
}

void SitStandReminder::setLabel(const QString& label) {
    if (label == m_label)
        return;
    m_label = label;
    emit countdownChanged(m_label, m_shown);
}

} // namespace ostrel
