// The sit-stand reminder end to end: a bound virtual desk in virtual time, the desktop reached
// through a notification server on the test's private session bus.
#include "SessionTestSupport.h"
#include "app/RealTimeWait.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "platform/FreedesktopNotifications.h"
#include "platform/Platform.h"
#include "session/CountdownView.h"
#include "session/DQNotificationHelper.h"
#include "session/NotificationAlert.h"
#include "session/SitStandReminder.h"
#include "store/DQDataSessionHelper.h"
#include "store/FileManager.h"
#include "support/NotificationServer.h"
#include "widgets/OMImageButton.h"
#include "widgets/WidgetTestSupport.h"

#include <QDBusMessage>
#include <QPushButton>
#include <algorithm>

namespace ostrel::test {
namespace {

using namespace std::chrono_literals;

class ReminderTest : public SessionTest {
protected:
    // The control screen on a desk whose record has the reminder on, polling often enough to
    // report its height before the first tick.
    VirtualDesk& openReminderDesk(const char* interval = "0", const char* custom = "0",
                                  int repeat = 0, const char* sound = "0", int startHeight = 720) {
        VirtualDesk& desk = bindDesk({.pollPeriod = 250ms, .startHeight = startHeight});
        OMBluetoothModel record = CurrentDeviceStore::load();
        record.sitOrStand = "1";
        record.remindInterval = interval;
        record.isCustom = custom;
        record.isRepeat = repeat;
        record.notificationsound = sound;
        CurrentDeviceStore::save(record);
        openControl();
        return desk;
    }

    QString label() const { return control->countdownView()->text(); }
    bool countdownShown() const { return !control->countdownView()->isHidden(); }
    static NotificationAlert* alert() { return NotificationAlert::current(); }

    // The notification shown `count`th, once the server has it.
    NotificationServer::Shown waitForShown(std::size_t count) {
        EXPECT_TRUE(waitUntil([this, count] { return server->shown.size() >= count; }, 5000));
        return server->shown.size() >= count ? server->shown[count - 1]
                                             : NotificationServer::Shown{};
    }
    bool waitForClosed(uint id) {
        return waitUntil([this, id] { return std::ranges::count(server->closed, id) == 1; }, 5000);
    }
    // Everything the application sent before this has reached the server.
    static void barrier() {
        const QString name = QStringLiteral("org.freedesktop.Notifications");
        QDBusConnection::sessionBus().call(
            QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/Notifications"),
                                           name, QStringLiteral("GetCapabilities")),
            QDBus::BlockWithGui);
    }
    void moveDesk() {
        session().holdKey(command::kDownKey);
        advance(2s);
        session().releaseKey();
        advance(2s);
    }
    // Ends the running round and, unless told otherwise, lets the counter stop.
    void endRound(bool andStop = true) {
        advance(std::chrono::seconds(
            SitStandReminder::countdownLength(counter().type(), counter().total()) -
            counter().time()));
        if (andStop)
            advance(SitStandReminder::kStopDelay);
    }

    FreedesktopNotifications client{QDBusConnection::sessionBus()};
    PlatformOverride<DesktopNotifications> installed{client};
    std::unique_ptr<NotificationServer> server = std::make_unique<NotificationServer>();
};

TEST(ReminderLabel, CountsDownInMinutesThenHoursAndUnknownKindsEndAtOnce) {
    EXPECT_EQ(SitStandReminder::getMMSSFromSS(3725), "01:02:05");
    EXPECT_EQ(SitStandReminder::getMMSSFromSS(3599), "59:59");
    EXPECT_EQ(SitStandReminder::getMMSSFromSS(125), "02:05");
    const std::pair<int, int> lengths[] = {{0, 2700}, {1, 3600}, {2, 7200}, {4, 0}, {-1, 0}};
    for (const auto& [type, seconds] : lengths)
        EXPECT_EQ(SitStandReminder::countdownLength(type, 17), seconds) << type;
    EXPECT_EQ(SitStandReminder::countdownLength(3, 17), 1020);
}

TEST(NotificationHelper, NoticesReadAsPlainText) {
    EXPECT_EQ(DQNotificationHelper::getZZwithString("<p>Stand&nbsp;up</p><p>now</p>"),
              "Stand up\nnow");
    EXPECT_EQ(DQNotificationHelper::getZZwithString("abc"), "abc");
}

TEST_F(ReminderTest, FortyFiveMinutesEndInOneSingleReminderThatSwitchesItselfOff) {
    openReminderDesk();
    EXPECT_EQ(label(), "45:00");
    advance(2699s);
    EXPECT_EQ(label(), "00:01");
    EXPECT_TRUE(countdownShown());
    EXPECT_EQ(alert(), nullptr);

    advance(1s);
    EXPECT_EQ(label(), "00:00");
    EXPECT_FALSE(countdownShown());
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->text(), "Please stand/sit for a while");
    EXPECT_TRUE(alert()->confirmButton()->isHidden());
    EXPECT_EQ(alert()->cancelButton()->text(), "Now");
    EXPECT_EQ(inBothStores("sitOrStand"), "0") << "still on before anyone answers";

    const NotificationServer::Shown shown = waitForShown(1);
    EXPECT_EQ(shown.summary, "Movement Reminder");
    EXPECT_EQ(shown.body, "Please stand/sit for a while");
    EXPECT_EQ(shown.actions, (QStringList{"default", "Now", "action", "Now"}));
    EXPECT_FALSE(shown.hints.contains("sound-name"));

    advance(SitStandReminder::kStopDelay);
    EXPECT_FALSE(counter().isRunning());
    EXPECT_EQ(counter().time(), 0);
    barrier();
    EXPECT_EQ(server->shown.size(), 1u); // the stop's second look reminds no one

    alert()->cancelButton()->click();
    EXPECT_EQ(alert(), nullptr);
    EXPECT_TRUE(waitForClosed(shown.id));
    moveDesk(); // off now: moving starts nothing
    EXPECT_FALSE(counter().isRunning());
}

TEST_F(ReminderTest, RepeatingRoundsAreAnsweredFromTheDesktopNotification) {
    openReminderDesk("2", "1", 1, "1");
    advance(1s); // the first tick follows the interval the connection set
    EXPECT_EQ(label(), "01:59");

    endRound();
    const NotificationServer::Shown first = waitForShown(1);
    EXPECT_EQ(first.summary, "Reminder");
    EXPECT_EQ(first.body, "Whether to continue the reminder?");
    EXPECT_EQ(first.actions, (QStringList{"default", "Remind Me Later", "action", "Remind Me Later",
                                          "cancel", "Stop"}));
    EXPECT_EQ(first.hints.value("sound-name").toString(), FreedesktopNotifications::kSoundName);
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->text(), "Whether to continue the reminder?");
    EXPECT_FALSE(alert()->confirmButton()->isHidden());
    EXPECT_EQ(alert()->cancelButton()->text(), "Cancel");
    EXPECT_EQ(CurrentDeviceStore::load().sitOrStand, "1");

    // "Remind Me Later": the next round, and the alert goes with the notification.
    server->click(first.id, "action");
    ASSERT_TRUE(waitUntil([] { return counter().isRunning(); }, 5000));
    EXPECT_EQ(alert(), nullptr);
    EXPECT_EQ(label(), "02:00");
    EXPECT_TRUE(waitForClosed(first.id));

    // A click on the notification itself answers as its button does.
    endRound();
    server->click(waitForShown(2).id, "default");
    ASSERT_TRUE(waitUntil([] { return counter().isRunning(); }, 5000));

    // "Stop": ended with the reminder on; the next movement starts the next round.
    endRound();
    server->click(waitForShown(3).id, "cancel");
    ASSERT_TRUE(waitUntil([] { return alert() == nullptr; }, 5000));
    EXPECT_FALSE(counter().isRunning());
    moveDesk();
    EXPECT_TRUE(counter().isRunning());
    EXPECT_TRUE(countdownShown());
    barrier();
    EXPECT_EQ(server->shown.size(), 3u);
}

TEST_F(ReminderTest, AlertAnswersTakeTheDesktopNotificationAwayAndLetGoOfHeldKeys) {
    VirtualDesk& desk = openReminderDesk("1", "1", 1, "0", VirtualDeskConfig{}.maxHeight);
    advance(59s);
    session().holdKey(command::kUpKey); // at the top: held, but nothing moves
    advance(1s);
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);
    EXPECT_FALSE(desk.isMoving());
    const NotificationServer::Shown first = waitForShown(1);
    advance(SitStandReminder::kStopDelay);
    ASSERT_NE(alert(), nullptr);
    alert()->confirmButton()->click();
    EXPECT_EQ(alert(), nullptr);
    EXPECT_TRUE(counter().isRunning());
    EXPECT_TRUE(waitForClosed(first.id));

    // Swiped away on the desktop: no answer, and nothing left for the alert's answer to take.
    endRound();
    const NotificationServer::Shown second = waitForShown(2);
    server->dismiss(second.id);
    barrier();
    ASSERT_NE(alert(), nullptr);
    alert()->confirmButton()->click();
    barrier();
    EXPECT_EQ(std::ranges::count(server->closed, second.id), 0);

    // Answered before the server said which one it showed: taken away once it has.
    endRound();
    alert()->cancelButton()->click();
    EXPECT_FALSE(counter().isRunning());
    EXPECT_TRUE(waitForClosed(waitForShown(3).id));
}

TEST_F(ReminderTest, MovementRestartsTheCountdownAndAReconnectionLeavesItAlone) {
    VirtualDesk& desk = openReminderDesk("2", "1", 1, "0");
    advance(100s);
    EXPECT_EQ(label(), "00:20");
    moveDesk();
    EXPECT_LE(counter().time(), 3); // restarted by the last height the moving desk reported
    EXPECT_EQ(label(), SitStandReminder::getMMSSFromSS(120 - counter().time()));
    advance(10s);
    const int counted = counter().time();
    NotificationCenter::defaultCenter().post(notifications::kUnitChange);
    EXPECT_EQ(counter().time(), counted) << "a unit switch is no movement";

    // Ended and answered "Cancel": stopped with the reminder on.
    endRound();
    ASSERT_NE(alert(), nullptr);
    alert()->cancelButton()->click();
    ASSERT_FALSE(counter().isRunning());

    alertAnswer = 0; // the link-loss prompt stays unanswered while the session reconnects
    desk.dropLink();
    NotificationCenter::defaultCenter().post(notifications::kReconnect);
    advance(3s);
    ASSERT_TRUE(desk.isSubscribed());
    EXPECT_FALSE(counter().isRunning());
    EXPECT_FALSE(countdownShown());
}

TEST_F(ReminderTest, ClearingShowsOnHoverAndSwitchesTheReminderAndItsSoundOff) {
    openReminderDesk("0", "0", 1, "1");
    advance(30s);
    CountdownView* view = control->countdownView();
    EXPECT_FALSE(view->isClearRevealed());
    hover(view, true);
    ASSERT_TRUE(view->isClearRevealed());

    view->clearButton()->click();
    EXPECT_FALSE(countdownShown());
    EXPECT_FALSE(counter().isRunning());
    EXPECT_EQ(counter().time(), 0);
    for (const char* key : {"sitOrStand", "notificationsound"})
        EXPECT_EQ(inBothStores(key), "0") << key;
    moveDesk(); // a repeating reminder switched off: moving starts nothing
    advance(3600s);
    EXPECT_FALSE(counter().isRunning());
    EXPECT_EQ(alert(), nullptr);
}

TEST_F(ReminderTest, WithoutAServerOrItsButtonsTheAlertAloneReminds) {
    server.reset();
    openReminderDesk("1", "1", 1, "0");
    endRound();
    ASSERT_NE(alert(), nullptr);
    alert()->confirmButton()->click();
    EXPECT_TRUE(counter().isRunning());

    // A server that shows no buttons gets the text alone.
    server = std::make_unique<NotificationServer>(false);
    endRound();
    EXPECT_TRUE(waitForShown(1).actions.isEmpty());
    EXPECT_EQ(client.hasActions(), false);
    EXPECT_NE(alert(), nullptr);
}

TEST_F(ReminderTest, UnreadableIntervalAndRepeatFlagEndAtOnceAsASingleReminder) {
    bindDesk({.pollPeriod = 250ms});
    QVariantMap record = toPropertyForm(CurrentDeviceStore::load());
    record.insert("sitOrStand", "1");
    record.insert("remindInterval", "soon");
    record.insert("isCustom", "1");
    record.insert("isRepeat", "often");
    FileManager::writeDictionary(record, QString::fromLatin1(CurrentDeviceStore::kFileName));
    openControl();
    EXPECT_EQ(counter().total(), 0);
    advance(1s);
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->text(), "Please stand/sit for a while");
}

// Away: the countdown holds and nothing reminds; back, the round starts over from the full
// interval, also after a lock and unlock inside one tick.
TEST_F(ReminderTest, AwayHoldsTheCountdownAndComingBackStartsItOver) {
    openReminderDesk("0", "0", 1, "0");
    advance(100s);
    presence.setPresent(false);
    advance(3600s);
    EXPECT_EQ(label(), "43:20");
    EXPECT_EQ(alert(), nullptr);

    presence.setPresent(true);
    EXPECT_EQ(label(), "45:00");
    advance(100s);
    presence.setPresent(false);
    presence.setPresent(true);
    EXPECT_EQ(label(), "45:00");
    advance(60s);
    EXPECT_EQ(label(), "44:00") << "the old round's count went on";
    endRound();
    EXPECT_EQ(waitForShown(1).summary, "Reminder");
    EXPECT_NE(alert(), nullptr);
}

// Without the pause the countdown runs through the absence, but a round that ends while nobody
// is there is dropped, not kept for the return: a single reminder stays on, and coming back
// starts a full round.
TEST_F(ReminderTest, WithoutThePauseARoundEndingWhileAwayIsDropped) {
    Object_SystemSetting setting =
        fromPropertyForm<Object_SystemSetting>(DQDataSessionHelper::userGetSystemSettinginfo());
    setting.pauseaway = "0";
    DQDataSessionHelper::userSaveSystemSetting(toPropertyForm(setting));
    openReminderDesk("0", "0", 0, "1");
    presence.setPresent(false);
    endRound();
    EXPECT_EQ(alert(), nullptr);
    EXPECT_FALSE(counter().isRunning());
    EXPECT_EQ(CurrentDeviceStore::load().sitOrStand, "1");

    presence.setPresent(true);
    EXPECT_EQ(label(), "45:00");
    EXPECT_TRUE(countdownShown());
    // Back between the end of an unseen round and its stop: a full round all the same.
    presence.setPresent(false);
    endRound(false);
    presence.setPresent(true);
    EXPECT_EQ(label(), "45:00");
    endRound();
    EXPECT_NE(alert(), nullptr);
    EXPECT_EQ(waitForShown(1).summary, "Movement Reminder");
    barrier();
    EXPECT_EQ(server->shown.size(), 1u) << "the dropped round reminded after all";
}

// Do not disturb: the alert still shows, the desktop gets neither notification nor sound.
TEST_F(ReminderTest, AnInhibitedServerGetsNothingWhileTheAlertStillShows) {
    openReminderDesk("1", "1", 1, "1");
    endRound();
    server->click(waitForShown(1).id, "action");
    ASSERT_TRUE(waitUntil([] { return counter().isRunning(); }, 5000));

    server->inhibited = true;
    endRound();
    barrier();
    barrier(); // the question, then what its answer let through
    EXPECT_EQ(server->shown.size(), 1u);
    ASSERT_NE(alert(), nullptr);
    alert()->confirmButton()->click();

    server->inhibited = false;
    endRound();
    EXPECT_EQ(waitForShown(2).hints.value("sound-name").toString(),
              FreedesktopNotifications::kSoundName);
    barrier();
    EXPECT_EQ(server->shown.size(), 2u) << "the inhibited round reached the desktop";
}

} // namespace
} // namespace ostrel::test
