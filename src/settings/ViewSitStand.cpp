#include "settings/ViewSitStand.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "core/Scheduler.h"
#include "session/OMTimeManager.h"
#include "session/SitStandReminder.h"
#include "settings/CurrentDeviceRecord.h"
#include "settings/SettingRowView.h"
#include "settings/SystemSettingRecord.h"
#include "settings/ViewReminderInterval.h"
#include "widgets/OMSwitchButton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>

namespace ostrel {

namespace {

constexpr QSize kSwitchSize{44, 24};
constexpr int kCustomType = OMTimeManager::kCustomType;

OMTimeManager& counter() {
    return OMTimeManager::sharedInstance();
}

std::string flag(bool on) {
    return on ? "1" : "0";
}

QString text(const std::optional<std::string>& value) {
    return QString::fromStdString(value.value_or(std::string()));
}

OMSwitchButton* makeSwitch(QWidget* parent) {
    auto* button = new OMSwitchButton(parent);
    button->setFixedSize(kSwitchSize);
    // The record decides the state; a click only asks for the change.
    button->setCheckable(false);
    return button;
}

} // namespace

ViewSitStand::ViewSitStand(DeskControlVC* fatherVC)
    : OMSettingPage(fatherVC, tr("Sit-stand alternation")) {
    initData();
    initView();
    refreshContentView();
    // A single reminder switches itself off when its countdown ends.
    NotificationCenter::defaultCenter().addObserver(
        this, QString::fromLatin1(notifications::kTimeManagerStop), [this](const QVariant&) {
            initData();
            refreshContentView();
        });
}

void ViewSitStand::initData() {
    m_record = CurrentDeviceRecord::load();
}

void ViewSitStand::initView() {
    const auto switchRow = [this](const QString& title, OMSwitchButton*& button) {
        auto* row = new QHBoxLayout;
        row->setContentsMargins(12, 6, 12, 6);
        row->addWidget(new QLabel(title, this), 1);
        button = makeSwitch(this);
        row->addWidget(button);
        contentLayout()->addLayout(row);
    };
    switchRow(tr("Sit-stand reminder"), m_sitStand);
    m_interval = new SettingRowView({}, tr("Reminder interval"), this);
    m_interval->setAccessoryImage(QStringLiteral("setting_arrow"));
    contentLayout()->addWidget(m_interval);
    switchRow(tr("Notification sound"), m_sound);
    switchRow(tr("Pause reminders while I'm away"), m_pauseAway);
    contentLayout()->addStretch();

    connect(m_sitStand, &QAbstractButton::clicked, this, &ViewSitStand::actionSitStandSwitch);
    connect(m_interval, &QAbstractButton::clicked, this, &ViewSitStand::actionSelectInterval);
    connect(m_sound, &QAbstractButton::clicked, this, &ViewSitStand::actionSoundSwitch);
    connect(m_pauseAway, &QAbstractButton::clicked, this, &ViewSitStand::actionPauseAwaySwitch);
}

bool ViewSitStand::isOn() const {
    return m_record.sitOrStand == "1";
}

void ViewSitStand::change(const std::function<void(OMBluetoothModel&)>& apply) {
    m_record = CurrentDeviceRecord::change(apply);
}

void ViewSitStand::actionSitStandSwitch() {
    change([](OMBluetoothModel& record) {
        const bool on = record.sitOrStand != "1";
        record.sitOrStand = flag(on);
        record.notificationsound = flag(on);
    });
    if (!isOn()) {
        counter().stop();
        counter().setTime(0);
    } else {
        counter().setTime(0);
        counter().start();
        const QString interval = text(m_record.remindInterval);
        if (m_record.isCustom == "1") {
            counter().setType(kCustomType);
            counter().setTotal(interval.toInt());
        } else {
            const int type = interval.toInt();
            counter().setType(type);
            if (OMTimeManager::isFixedType(type))
                counter().setTotal(OMTimeManager::kFixedMinutes[std::size_t(type)]);
        }
    }
    refreshContentView();
}

void ViewSitStand::actionSelectInterval() {
    initData(); // the reminder may have ended since the page showed it
    if (!isOn()) {
        refreshContentView();
        return;
    }
    auto* chooser = new ViewReminderInterval(fatherVC());
    QPointer<ViewSitStand> self(this);
    chooser->setViewWithTime(text(m_record.remindInterval), text(m_record.isCustom),
                             QString::fromStdString(flag(m_record.isRepeat == 1)),
                             [self](int selection, int minutes, bool repeat) {
                                 if (self)
                                     self->intervalChosen(selection, minutes, repeat);
                             });
    push(chooser);
}

void ViewSitStand::intervalChosen(int selection, int minutes, bool repeat) {
    const bool fixed = OMTimeManager::isFixedType(selection);
    change([=](OMBluetoothModel& record) {
        record.isCustom = flag(!fixed);
        record.remindInterval = std::to_string(fixed ? selection : minutes);
        record.isRepeat = repeat ? 1 : 0;
    });
    if (fixed) {
        counter().setType(selection);
        counter().setTotal(OMTimeManager::kFixedMinutes[std::size_t(selection)]);
    } else {
        counter().setType(kCustomType);
        counter().setTotal(minutes);
    }
    // A countdown already past the new length starts over; a stopped one starts.
    if (counter().time() != 0) {
        if (counter().time() >= counter().total() * 60)
            counter().setTime(0);
    } else {
        counter().start();
    }
    Scheduler::instance().after(Scheduler::Duration::zero(), this,
                                [this] { refreshContentView(); });
}

void ViewSitStand::actionSoundSwitch() {
    initData(); // the reminder may have ended since the page showed it
    if (isOn())
        change([](OMBluetoothModel& record) {
            record.notificationsound = flag(record.notificationsound != "1");
        });
    refreshContentView();
}

void ViewSitStand::actionPauseAwaySwitch() {
    SystemSettingRecord::change(&Object_SystemSetting::pauseaway,
                                flag(!SitStandReminder::pausesWhileAway()));
    refreshContentView();
}

void ViewSitStand::refreshContentView() {
    m_sitStand->setImageName(OMSwitchButton::imageNameFor(isOn()));
    m_pauseAway->setImageName(OMSwitchButton::imageNameFor(SitStandReminder::pausesWhileAway()));
    m_sound->setImageName(
        OMSwitchButton::imageNameFor(isOn() && m_record.notificationsound == "1"));
    const QString interval = text(m_record.remindInterval);
    QString shown;
    if (m_record.isCustom == "1")
        shown = tr("%1min").arg(interval);
    else if (interval == u"0")
        shown = tr("%1min").arg(QStringLiteral("45"));
    else if (interval == u"1" || interval == u"2")
        shown = tr("%1h").arg(interval);
    m_interval->setValueText(shown);
    // Both only matter while the reminder runs; greyed, they say so.
    const QString why = isOn() ? QString() : tr("Turn on the sit-stand reminder first");
    for (QWidget* control : {static_cast<QWidget*>(m_interval), static_cast<QWidget*>(m_sound)}) {
        control->setEnabled(isOn());
        control->setToolTip(why);
    }
}

} // namespace ostrel
