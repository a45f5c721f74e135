#include "SettingsTestSupport.h"
#include "platform/FreedesktopNotifications.h"
#include "platform/Platform.h"
#include "session/CountdownView.h"
#include "session/NotificationAlert.h"
#include "settings/SystemSettingRecord.h"
#include "settings/ViewReminderInterval.h"
#include "settings/ViewSitStand.h"
#include "widgets/OMSwitchButton.h"

#include <QLineEdit>

namespace ostrel::test {
namespace {

using namespace std::chrono_literals;

class SitStandPagesTest : public SettingsTest {
protected:
    ViewSitStand& openPage(const char* interval = "0") {
        bindDesk();
        OMBluetoothModel record = CurrentDeviceStore::load();
        record.remindInterval = interval;
        CurrentDeviceStore::save(record);
        openControlWithSettings();
        auto* page = new ViewSitStand(control.get());
        control->pushViewControlWithView(page);
        return *page;
    }

    ViewReminderInterval& openInterval(ViewSitStand& page) {
        click(page.intervalRow());
        EXPECT_NE(top<ViewReminderInterval>(), nullptr);
        return *top<ViewReminderInterval>();
    }

    static bool isOn(OMSwitchButton* button) {
        return button->imageName() == OMSwitchButton::imageNameFor(true);
    }

    // No notification server: the alert alone reminds.
    FreedesktopNotifications offline{QDBusConnection(QStringLiteral("no-bus"))};
    PlatformOverride<DesktopNotifications> installed{offline};
};

TEST_F(SitStandPagesTest, TheSwitchesTurnTheReminderAndItsSoundTogetherAndThePauseAlone) {
    ViewSitStand& page = openPage("1");
    EXPECT_EQ(page.intervalRow()->valueText(), "1h");
    click(page.intervalRow()); // the interval waits for the reminder to be on
    EXPECT_EQ(top<ViewSitStand>(), &page);

    click(page.sitStandSwitch());
    EXPECT_TRUE(isOn(page.sitStandSwitch()));
    EXPECT_TRUE(isOn(page.soundSwitch()));
    EXPECT_EQ(inBothStores("sitOrStand"), "1");
    EXPECT_EQ(inBothStores("notificationsound"), "1");
    EXPECT_EQ(counter().type(), 1);
    EXPECT_EQ(counter().total(), 60);
    advance(1s);
    EXPECT_FALSE(control->countdownView()->isHidden());
    EXPECT_EQ(control->countdownView()->text(), "59:59");

    click(page.soundSwitch());
    EXPECT_EQ(inBothStores("notificationsound"), "0");
    click(page.sitStandSwitch());
    EXPECT_FALSE(counter().isRunning());
    EXPECT_EQ(counter().time(), 0);
    EXPECT_TRUE(control->countdownView()->isHidden());
    EXPECT_EQ(inBothStores("sitOrStand"), "0");
    click(page.soundSwitch()); // nothing while off
    EXPECT_EQ(inBothStores("notificationsound"), "0");

    // Pausing while away is an application setting, on until switched off.
    EXPECT_TRUE(isOn(page.pauseAwaySwitch()));
    click(page.pauseAwaySwitch());
    EXPECT_FALSE(isOn(page.pauseAwaySwitch()));
    EXPECT_EQ(SystemSettingRecord::load().pauseaway, "0");
    EXPECT_EQ(SystemSettingRecord::load().unit, "0") << "another setting was overwritten";
}

TEST_F(SitStandPagesTest, AChosenIntervalIsSavedAndReachesTheRunningCountdown) {
    ViewSitStand& page = openPage();
    click(page.sitStandSwitch());
    advance(100s);

    ViewReminderInterval& fixed = openInterval(page);
    EXPECT_EQ(fixed.selection(), 0);
    click(fixed.choiceRow(2));
    click(fixed.repeatRow());
    click(fixed.confirmButton());
    EXPECT_EQ(inBothStores("remindInterval"), "2");
    EXPECT_EQ(inBothStores("isCustom"), "0");
    EXPECT_EQ(CurrentDeviceStore::load().isRepeat, 1);
    EXPECT_EQ(counter().total(), 120);
    EXPECT_EQ(counter().time(), 100); // still within two hours: not restarted
    advance(0ms);
    EXPECT_EQ(page.intervalRow()->valueText(), "2h");

    ViewReminderInterval& custom = openInterval(page);
    EXPECT_EQ(custom.selection(), 2);
    EXPECT_TRUE(custom.isRepeat());
    click(custom.choiceRow(ViewReminderInterval::kCustomSelection));
    EXPECT_FALSE(custom.minutesField()->isReadOnly());
    custom.minutesField()->setText("1");
    click(custom.singleRow());
    click(custom.confirmButton());
    EXPECT_EQ(inBothStores("remindInterval"), "1");
    EXPECT_EQ(inBothStores("isCustom"), "1");
    EXPECT_EQ(counter().type(), OMTimeManager::kCustomType);
    EXPECT_EQ(counter().time(), 0); // already past one minute: starts over
    advance(0ms);
    EXPECT_EQ(page.intervalRow()->valueText(), "1min");

    // Minutes are taken as typed: an empty field is a countdown of nothing, over on the next
    // tick.
    ViewReminderInterval& again = openInterval(page);
    EXPECT_EQ(again.minutesField()->text(), "1");
    again.minutesField()->clear();
    click(again.confirmButton());
    EXPECT_EQ(inBothStores("remindInterval"), "0");
    EXPECT_EQ(NotificationAlert::current(), nullptr);
    advance(1s);
    ASSERT_NE(NotificationAlert::current(), nullptr);
    EXPECT_EQ(NotificationAlert::current()->text(), "Please stand/sit for a while");
}

// A single reminder switches itself off when its countdown ends; a page that still shows it on,
// and an interval choice left open, write nothing back over that.
TEST_F(SitStandPagesTest, AFinishedSingleReminderStaysOffWhatEverThePagesStillHold) {
    ViewSitStand& page = openPage();
    click(page.sitStandSwitch());
    ViewReminderInterval& custom = openInterval(page);
    click(custom.choiceRow(ViewReminderInterval::kCustomSelection));
    custom.minutesField()->setText("1");
    click(custom.singleRow());
    click(custom.confirmButton());
    ViewReminderInterval& leftOpen = openInterval(page);

    advance(61s);
    ASSERT_NE(NotificationAlert::current(), nullptr);
    ASSERT_EQ(inBothStores("sitOrStand"), "0");
    EXPECT_FALSE(isOn(page.sitStandSwitch())) << "the page follows the record";

    click(leftOpen.confirmButton());
    EXPECT_EQ(inBothStores("sitOrStand"), "0");
    click(page.soundSwitch());
    EXPECT_EQ(inBothStores("sitOrStand"), "0");
    EXPECT_EQ(inBothStores("notificationsound"), "1");
}

} // namespace
} // namespace ostrel::test
