// The sit-stand reminder end to end: a bound virtual desk in virtual time, the desktop reached
// through a notification server on the test's private session bus.
#include "SessionTestSupport.h"
#include "app/RealTimeWait.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "session/CountdownView.h"
#include "session/DQNotificationHelper.h"
#include "session/DesktopNotifications.h"
#include "session/NotificationAlert.h"
#include "session/SitStandReminder.h"
#include "store/FileManager.h"
#include "support/NotificationServer.h"
#include "widgets/OMImageButton.h"

#include <QDBusMessage>
#include <QEnterEvent>
#include <QPushButton>
#include <algorithm>

namespace ostrel::test {
namespace {

using namespace std::chrono_literals;

constexpr int kWaitMs = 5000;

struct Reminder {
    const char* interval = "0";
    const char* custom = "0";
    int repeat = 0;
    const char* sound = "0";
};

class ReminderTest : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        client = std::make_unique<DesktopNotifications>(QDBusConnection::sessionBus());
        previous = DesktopNotifications::setInstance(client.get());
    }

    void TearDown() override {
        SessionTest::TearDown();
        DesktopNotifications::setInstance(previous);
        OMTimeManager::sharedInstance().setType(0);
        OMTimeManager::sharedInstance().setTotal(0);
    }

    void startServer(bool actions = true) {
        server = std::make_unique<NotificationServer>(actions);
    }

    // A desk whose record has the reminder on. It polls four times a second, so that hours of
    // desk time stay cheap, and reports its height before the first tick.
    VirtualDesk& bindReminderDesk(Reminder reminder, int startHeight = 720) {
        VirtualDeskConfig config;
        config.pollPeriod = 250ms;
        config.startHeight = startHeight;
        VirtualDesk& desk = bindDesk(config);
        OMBluetoothModel record = CurrentDeviceStore::load();
        record.sitOrStand = "1";
        record.remindInterval = reminder.interval;
        record.isCustom = reminder.custom;
        record.isRepeat = reminder.repeat;
        record.notificationsound = reminder.sound;
        CurrentDeviceStore::save(record);
        return desk;
    }

    static OMTimeManager& counter() { return OMTimeManager::sharedInstance(); }
    QString label() const { return control->countdownView()->text(); }
    bool countdownShown() const { return !control->countdownView()->isHidden(); }
    static NotificationAlert* alert() { return NotificationAlert::current(); }

    const NotificationServer::Shown& waitForShown(std::size_t count) {
        EXPECT_TRUE(waitUntil([this, count] { return server->shown().size() >= count; }, kWaitMs));
        return server->shown().at(count - 1);
    }
    bool waitForClosed(uint id) {
        return waitUntil([this, id] { return std::ranges::count(server->closed(), id) == 1; },
                         kWaitMs);
    }
    // Everything the application sent before this has reached the server.
    static void barrier() {
        QDBusConnection::sessionBus().call(
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
                                           QStringLiteral("/org/freedesktop/Notifications"),
                                           QStringLiteral("org.freedesktop.Notifications"),
                                           QStringLiteral("GetServerInformation")),
            QDBus::BlockWithGui);
    }
    static std::optional<std::string> bound(const char* key) {
        const QVariant value = OMPlistManager::getDeviceInfoWithBlueToothName(kDeskName).value(
            QString::fromLatin1(key));
        return value.isValid() ? std::optional(value.toString().toStdString()) : std::nullopt;
    }
    void moveDesk() {
        session().holdKey(command::kDownKey);
        advance(2s);
        session().releaseKey();
        advance(2s);
    }

    std::unique_ptr<NotificationServer> server;
    std::unique_ptr<DesktopNotifications> client;
    DesktopNotifications* previous = nullptr;
};

TEST(ReminderLabel, CountsDownInMinutesThenHoursAndUnknownKindsEndAtOnce) {
    EXPECT_EQ(SitStandReminder::getMMSSFromSS(3725), "01:02:05");
    EXPECT_EQ(SitStandReminder::getMMSSFromSS(3600), "01:00:00");
    EXPECT_EQ(SitStandReminder::getMMSSFromSS(3599), "59:59");
    EXPECT_EQ(SitStandReminder::getMMSSFromSS(125), "02:05");
    EXPECT_EQ(SitStandReminder::getMMSSFromSS(0), "00:00");
    EXPECT_EQ(SitStandReminder::countdownLength(0, 99), 2700);
    EXPECT_EQ(SitStandReminder::countdownLength(1, 99), 3600);
    EXPECT_EQ(SitStandReminder::countdownLength(2, 99), 7200);
    EXPECT_EQ(SitStandReminder::countdownLength(3, 17), 1020);
    EXPECT_EQ(SitStandReminder::countdownLength(3, 0), 0);
    EXPECT_EQ(SitStandReminder::countdownLength(4, 17), 0);
    EXPECT_EQ(SitStandReminder::countdownLength(-1, 17), 0);
}

TEST(NotificationHelper, NoticesReadAsPlainTextAndThePollFollowsTheSwitch) {
    EXPECT_EQ(DQNotificationHelper::getZZwithString("<p>Stand&nbsp;up</p><p>now</p>"),
              "Stand up\nnow");
    EXPECT_EQ(DQNotificationHelper::getZZwithString("<b>x</b>"), "x"); // "</b>" dropped first
    EXPECT_EQ(DQNotificationHelper::getZZwithString("abc"), "abc");
    EXPECT_EQ(DQNotificationHelper::getZZwithString("abcd"), "");

    DQNotificationHelper& helper = DQNotificationHelper::shareInstance();
    helper.openNotification();
    EXPECT_TRUE(helper.isOpen());
    helper.closeNotification();
    EXPECT_FALSE(helper.isOpen());
}

TEST_F(ReminderTest, FortyFiveMinutesEndInOneSingleReminderThatSwitchesItselfOff) {
    startServer();
    bindReminderDesk({});
    openControl();
    EXPECT_TRUE(countdownShown());
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
    // Off in both stores before anyone answers.
    EXPECT_EQ(CurrentDeviceStore::load().sitOrStand, "0");
    EXPECT_EQ(bound("sitOrStand"), "0");

    const NotificationServer::Shown shown = waitForShown(1);
    EXPECT_EQ(shown.summary, "Movement Reminder");
    EXPECT_EQ(shown.body, "Please stand/sit for a while");
    EXPECT_EQ(shown.actions, (QStringList{"default", "Now", "action", "Now"}));
    EXPECT_FALSE(shown.hints.contains("sound-name"));

    advance(SitStandReminder::kStopDelay);
    EXPECT_FALSE(counter().isRunning());
    EXPECT_EQ(counter().time(), 0);
    EXPECT_FALSE(countdownShown());
    barrier();
    EXPECT_EQ(server->shown().size(), 1u); // the stop's second look reminds no one

    alert()->cancelButton()->click();
    EXPECT_EQ(alert(), nullptr);
    EXPECT_TRUE(waitForClosed(shown.id));
    moveDesk(); // off now: moving starts nothing
    EXPECT_FALSE(counter().isRunning());
    EXPECT_FALSE(countdownShown());
}

TEST_F(ReminderTest, RepeatingRoundsAreAnsweredFromTheDesktopNotification) {
    startServer();
    bindReminderDesk({"2", "1", 1, "1"});
    openControl();
    advance(1s); // the first tick follows the interval the connection set
    EXPECT_EQ(label(), "01:59");

    advance(119s);
    const NotificationServer::Shown first = waitForShown(1);
    EXPECT_EQ(first.summary, "Reminder");
    EXPECT_EQ(first.body, "Whether to continue the reminder?");
    EXPECT_EQ(first.actions, (QStringList{"default", "Remind Me Later", "action", "Remind Me Later",
                                          "cancel", "Stop"}));
    EXPECT_EQ(first.hints.value("sound-name").toString(), DesktopNotifications::kSoundName);
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->text(), "Whether to continue the reminder?");
    EXPECT_FALSE(alert()->confirmButton()->isHidden());
    EXPECT_EQ(alert()->cancelButton()->text(), "Cancel");
    EXPECT_EQ(CurrentDeviceStore::load().sitOrStand, "1");
    advance(SitStandReminder::kStopDelay);

    // "Remind Me Later": the next round, and the alert goes with the notification.
    server->click(first.id, "action");
    ASSERT_TRUE(waitUntil([] { return counter().isRunning(); }, kWaitMs));
    EXPECT_EQ(alert(), nullptr);
    EXPECT_TRUE(countdownShown());
    EXPECT_EQ(label(), "02:00");
    EXPECT_TRUE(waitForClosed(first.id));

    // A click on the notification itself answers as its button does.
    advance(120s);
    const NotificationServer::Shown second = waitForShown(2);
    advance(SitStandReminder::kStopDelay);
    server->click(second.id, "default");
    ASSERT_TRUE(waitUntil([] { return counter().isRunning(); }, kWaitMs));

    // "Stop": the countdown stays ended, the reminder stays on, and the next movement starts
    // the next round.
    advance(120s);
    const NotificationServer::Shown third = waitForShown(3);
    advance(SitStandReminder::kStopDelay);
    server->click(third.id, "cancel");
    ASSERT_TRUE(waitUntil([] { return alert() == nullptr; }, kWaitMs));
    EXPECT_FALSE(counter().isRunning());
    EXPECT_EQ(CurrentDeviceStore::load().sitOrStand, "1");

    moveDesk();
    EXPECT_TRUE(counter().isRunning());
    EXPECT_TRUE(countdownShown());
    barrier();
    EXPECT_EQ(server->shown().size(), 3u);
}

TEST_F(ReminderTest, AlertAnswersTakeTheDesktopNotificationAwayAndLetGoOfHeldKeys) {
    startServer();
    VirtualDesk& desk = bindReminderDesk({"1", "1", 1, "0"}, VirtualDeskConfig{}.maxHeight);
    openControl();

    advance(59s);
    session().holdKey(command::kUpKey); // at the top: held, but nothing moves
    advance(1s);
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);
    EXPECT_FALSE(desk.isMoving());
    const NotificationServer::Shown first = waitForShown(1);
    ASSERT_NE(alert(), nullptr);
    advance(SitStandReminder::kStopDelay);

    alert()->confirmButton()->click();
    EXPECT_EQ(alert(), nullptr);
    EXPECT_TRUE(counter().isRunning());
    EXPECT_TRUE(waitForClosed(first.id));

    // Swiped away on the desktop: no answer, and nothing left for the alert's answer to take.
    advance(60s);
    const NotificationServer::Shown second = waitForShown(2);
    advance(SitStandReminder::kStopDelay);
    server->dismiss(second.id);
    barrier();
    ASSERT_NE(alert(), nullptr);
    alert()->cancelButton()->click();
    EXPECT_EQ(alert(), nullptr);
    EXPECT_FALSE(counter().isRunning());
    barrier();
    EXPECT_EQ(std::ranges::count(server->closed(), second.id), 0);
}

TEST_F(ReminderTest, MovementRestartsTheCountdownAndAReconnectionLeavesItAlone) {
    startServer();
    VirtualDesk& desk = bindReminderDesk({"2", "1", 1, "0"});
    openControl();
    advance(100s);
    EXPECT_EQ(label(), "00:20");
    moveDesk();
    EXPECT_LE(counter().time(), 3); // restarted by the last height the moving desk reported
    EXPECT_EQ(label(), SitStandReminder::getMMSSFromSS(120 - counter().time()));

    // Ended and answered "Cancel": stopped with the reminder on.
    advance(std::chrono::seconds(120 - counter().time()));
    ASSERT_NE(alert(), nullptr);
    advance(SitStandReminder::kStopDelay);
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
    startServer();
    bindReminderDesk({"0", "0", 1, "1"});
    openControl();
    advance(30s);
    CountdownView* view = control->countdownView();
    EXPECT_TRUE(view->clearButton()->isHidden());
    QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QCoreApplication::sendEvent(view, &enter);
    ASSERT_FALSE(view->clearButton()->isHidden());

    view->clearButton()->click();
    EXPECT_FALSE(countdownShown());
    EXPECT_FALSE(counter().isRunning());
    EXPECT_EQ(counter().time(), 0);
    for (const char* key : {"sitOrStand", "notificationsound"})
        EXPECT_EQ(bound(key), "0") << key;
    EXPECT_EQ(CurrentDeviceStore::load().sitOrStand, "0");
    EXPECT_EQ(CurrentDeviceStore::load().notificationsound, "0");
    advance(3600s);
    EXPECT_EQ(alert(), nullptr);
}

TEST_F(ReminderTest, WithoutAServerOrItsButtonsTheAlertAloneReminds) {
    bindReminderDesk({"1", "1", 1, "0"});
    openControl();
    advance(60s);
    ASSERT_NE(alert(), nullptr);
    advance(SitStandReminder::kStopDelay);
    alert()->confirmButton()->click();
    EXPECT_TRUE(counter().isRunning());
    EXPECT_EQ(alert(), nullptr);

    // A server that shows no buttons gets the text alone.
    startServer(false);
    advance(60s);
    const NotificationServer::Shown shown = waitForShown(1);
    EXPECT_EQ(shown.summary, "Reminder");
    EXPECT_TRUE(shown.actions.isEmpty());
    EXPECT_EQ(client->hasActions(), false);
    ASSERT_NE(alert(), nullptr);
}

TEST_F(ReminderTest, UnreadableIntervalAndRepeatFlagEndAtOnceAsASingleReminder) {
    startServer();
    bindReminderDesk({});
    QVariantMap record = toPropertyForm(CurrentDeviceStore::load());
    record.insert("remindInterval", "soon");
    record.insert("isCustom", "1");
    record.insert("isRepeat", "often");
    FileManager::writeDictionary(record, QString::fromLatin1(CurrentDeviceStore::kFileName));
    openControl();
    EXPECT_EQ(counter().type(), OMTimeManager::kCustomType);
    EXPECT_EQ(counter().total(), 0);

    advance(1s);
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->text(), "Please stand/sit for a while");
    EXPECT_EQ(waitForShown(1).summary, "Movement Reminder");
}

} // namespace
} // namespace ostrel::test
