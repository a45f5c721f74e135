// The desk interface on a private session bus: a script's connection calls the application's,
// which drives a virtual desk in virtual time.
#include "RealTimeWait.h"
#include "SessionTestSupport.h"
#include "app/AppConfig.h"
#include "app/DeskBusAdaptor.h"
#include "app/SingleInstance.h"
#include "session/HotKeyMovement.h"
#include "widgets/HomeFunctionBtn.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QFile>
#include <QXmlStreamReader>
#include <cmath>
#include <limits>

namespace ostrel::test {
namespace {

constexpr int kDeliveryWaitMs = 5000;

// Every PropertiesChanged the script's connection hears.
class ChangeRecorder : public QObject {
    Q_OBJECT
public:
    std::vector<QVariantMap> changes;

public slots:
    void changed(const QString&, const QVariantMap& properties, const QStringList&) {
        changes.push_back(properties);
    }
};

// The members of the interface, as "kind name type" lines, from introspection XML.
QStringList members(const QString& xml) {
    QStringList found;
    QXmlStreamReader reader(xml);
    bool inside = false;
    while (!reader.atEnd()) {
        if (!reader.readNextStartElement())
            continue;
        const auto attributes = reader.attributes();
        if (reader.name() == u"interface")
            inside =
                attributes.value(QStringLiteral("name")) == QLatin1String(config::kDeskInterface);
        else if (inside && reader.name() != u"annotation")
            found << QStringLiteral("%1 %2 %3 %4")
                         .arg(reader.name(), attributes.value(QStringLiteral("name")),
                              attributes.value(QStringLiteral("type")),
                              attributes.value(QStringLiteral("direction")));
    }
    found.sort();
    return found;
}

class DeskBusTest : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        instance = std::make_unique<SingleInstance>(
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("app")));
        ASSERT_TRUE(instance->claim()) << "needs a session bus: run under dbus-run-session";
        script.connect(QLatin1String(config::kDBusService), QLatin1String(config::kDeskPath),
                       QStringLiteral("org.freedesktop.DBus.Properties"),
                       QStringLiteral("PropertiesChanged"), &recorder,
                       SLOT(changed(QString, QVariantMap, QStringList)));
    }

    void TearDown() override {
        control.reset();
        instance.reset();
        SessionTest::TearDown();
    }

    DeskSession& open(VirtualDeskConfig config = {}, const char* presets = "0,0,0,0") {
        desk = &bindDesk(std::move(config), presets);
        openControl();
        return session();
    }

    QDBusMessage call(const QString& method, const QVariantList& arguments = {}) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QLatin1String(config::kDBusService), QLatin1String(config::kDeskPath),
            QLatin1String(config::kDeskInterface), method);
        message.setArguments(arguments);
        // The answer comes from this very process: keep its events flowing.
        return script.call(message, QDBus::BlockWithGui);
    }

    QVariant property(const char* name) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QLatin1String(config::kDBusService), QLatin1String(config::kDeskPath),
            QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        message.setArguments({QLatin1String(config::kDeskInterface), QLatin1String(name)});
        const QDBusMessage reply = script.call(message, QDBus::BlockWithGui);
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    // Advances virtual time in poll-sized steps until the move ends.
    void runMove() {
        for (int step = 0; step < 600 && session().goToHeight().isMoving(); ++step)
            advance(50ms);
        advance(1s);
    }

    // Lets the bus deliver what has been sent: real time, bounded, ends on the condition.
    static bool delivered(const std::function<bool()>& condition) {
        return waitUntil(condition, kDeliveryWaitMs);
    }

    void expectNothingHeld() const {
        EXPECT_EQ(handle().currentCommandType(), command::kNoKey);
        if (desk) {
            EXPECT_FALSE(desk->isMoving());
        }
    }

    std::unique_ptr<SingleInstance> instance;
    QDBusConnection script =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("script"));
    ChangeRecorder recorder;
    VirtualDesk* desk = nullptr;
};

// false = the desk follows the target command, true = it ignores it.
class DeskBusPathTest : public DeskBusTest, public ::testing::WithParamInterface<bool> {
protected:
    void openOnPath() {
        VirtualDeskConfig config;
        config.ignoresTargetHeight = GetParam();
        open(config);
    }
    // A scripted move on this path, `runFor` under way.
    void moveOnPathFor(double cm, std::chrono::milliseconds runFor) {
        openOnPath();
        ASSERT_EQ(call(QStringLiteral("MoveTo"), {cm}).type(), QDBusMessage::ReplyMessage);
        advance(runFor);
    }
};

TEST_P(DeskBusPathTest, MoveToArrivesWithinHalfACentimetre) {
    openOnPath();
    for (const double cm : {110.0, 68.5}) {
        const QDBusMessage reply = call(QStringLiteral("MoveTo"), {cm});
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
        EXPECT_TRUE(property("Moving").toBool());
        runMove();
        const int target = int(cm * 10);
        EXPECT_LE(std::abs(desk->heightTenths() - target), 5) << cm;
        EXPECT_NEAR(property("Height").toDouble(), cm, 0.5);
        expectNothingHeld();
    }
}

TEST_P(DeskBusPathTest, StopHaltsTheDeskWithinOnePoll) {
    ASSERT_NO_FATAL_FAILURE(moveOnPathFor(115.0, 2500ms));
    ASSERT_TRUE(desk->isMoving());
    ASSERT_EQ(call(QStringLiteral("Stop")).type(), QDBusMessage::ReplyMessage);
    advance(desk->config().pollPeriod);
    expectNothingHeld();
    EXPECT_LT(desk->heightTenths(), 1100);
}

TEST_P(DeskBusPathTest, AUserKeyEndsAScriptedMoveAndTheKeyIsTheirs) {
    ASSERT_NO_FATAL_FAILURE(moveOnPathFor(115.0, 2s));
    control->touchDwon(control->downButton());
    EXPECT_FALSE(session().goToHeight().isMoving());
    EXPECT_EQ(handle().currentCommandType(), command::kDownKey);
    advance(500ms);
    control->touchUp(control->downButton());
    advance(200ms);
    expectNothingHeld();
    EXPECT_LT(desk->heightTenths(), 1150);
}

TEST_P(DeskBusPathTest, LosingTheLinkEndsAScriptedMove) {
    ASSERT_NO_FATAL_FAILURE(moveOnPathFor(65.0, 1s));
    desk->dropLink();
    advance(200ms);
    EXPECT_FALSE(session().goToHeight().isMoving());
    EXPECT_EQ(handle().currentCommandType(), command::kNoKey);
    EXPECT_FALSE(property("Connected").toBool());
    if (GetParam()) { // a held key stops with the link; the desk's own move runs to its end
        EXPECT_FALSE(desk->isMoving());
    }
}

INSTANTIATE_TEST_SUITE_P(BothPaths, DeskBusPathTest, ::testing::Bool());

TEST_F(DeskBusTest, BadCallsGetClearErrorsAndHoldNothing) {
    // No control screen, no desk.
    for (const char* method : {"MoveTo", "RecallPreset", "Stop", "Down", "Release", "Connect"}) {
        const QVariantList arguments = method == std::string("MoveTo")         ? QVariantList{100.0}
                                       : method == std::string("RecallPreset") ? QVariantList{"sit"}
                                                                               : QVariantList{};
        const QDBusMessage reply = call(QLatin1String(method), arguments);
        EXPECT_EQ(reply.errorName(), QLatin1String(config::kNotConnectedError)) << method;
    }
    EXPECT_FALSE(property("Connected").toBool());

    open({}, "72,0,0,0");
    const struct {
        const char* method;
        QVariant argument;
        QString error;
        const char* mentions;
    } bad[] = {
        {"MoveTo", std::numeric_limits<double>::quiet_NaN(),
         QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"), "number"},
        {"MoveTo", std::numeric_limits<double>::infinity(),
         QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"), "number"},
        {"MoveTo", 200.0, QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"), "120.0cm"},
        {"MoveTo", 59.9, QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"), "60.0cm"},
        {"RecallPreset", QStringLiteral("desk"),
         QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"), "sit, stand, m1 or m2"},
        {"RecallPreset", QStringLiteral("m1"), QLatin1String(config::kPresetNotSetError), "m1"},
    };
    for (const auto& [method, argument, error, mentions] : bad) {
        const QDBusMessage reply = call(QLatin1String(method), {argument});
        EXPECT_EQ(reply.errorName(), error) << method << " " << argument.toString().toStdString();
        EXPECT_TRUE(reply.errorMessage().contains(QLatin1String(mentions)))
            << reply.errorMessage().toStdString();
        advance(200ms);
        expectNothingHeld();
    }

    // A good preset still works afterwards.
    ASSERT_EQ(call(QStringLiteral("RecallPreset"), {QStringLiteral("SIT")}).type(),
              QDBusMessage::ReplyMessage);
    runMove();
    EXPECT_LE(std::abs(desk->heightTenths() - 720), 5);
}

// Up and Down are the hot keys' toggle: the other direction stops rather than reverses, and
// a movement nobody stops ends at the end stop by the hot keys' stall watchdog.
TEST_F(DeskBusTest, UpAndDownToggleAsTheHotKeysAndEndByTheirWatchdog) {
    EXPECT_EQ(call(QStringLiteral("Up")).errorName(), QLatin1String(config::kNotConnectedError));
    open();
    const auto press = [&](const char* method) {
        const QDBusMessage reply = call(QLatin1String(method));
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << method;
        return reply.arguments().value(0).toBool();
    };
    EXPECT_TRUE(press("Up"));
    advance(1s);
    EXPECT_EQ(handle().currentCommandType(), command::kUpKey);
    EXPECT_TRUE(desk->isMoving());
    EXPECT_TRUE(property("Moving").toBool());
    EXPECT_FALSE(press("Down"));
    advance(200ms);
    expectNothingHeld();

    EXPECT_TRUE(press("Down"));
    EXPECT_EQ(handle().currentCommandType(), command::kDownKey);
    advance(8s); // 12 cm above the end stop at 3.8 cm/s, then the stall watchdog
    expectNothingHeld();
    EXPECT_EQ(desk->heightTenths(), 600);
    EXPECT_FALSE(session().hotKeyMovement().isMoving());
}

TEST_F(DeskBusTest, PropertyChangesArriveAFewTimesASecondWhileMoving) {
    open({}, "72,110,0,0");
    ASSERT_TRUE(delivered([&] {
        return std::any_of(recorder.changes.begin(), recorder.changes.end(),
                           [](const QVariantMap& change) {
                               return change.value(QStringLiteral("Connected")) == true;
                           });
    }));
    EXPECT_EQ(property("DeskName").toString(), kDeskName);
    EXPECT_EQ(property("Unit").toString(), QStringLiteral("cm"));

    recorder.changes.clear();
    ASSERT_EQ(call(QStringLiteral("MoveTo"), {100.0}).type(), QDBusMessage::ReplyMessage);
    advance(2s); // about 7.6 cm, a new height on every poll
    ASSERT_TRUE(delivered([&] { return recorder.changes.size() >= 8; }));
    EXPECT_LE(recorder.changes.size(), std::size_t(2s / DeskBusAdaptor::kChangeInterval + 2));
    EXPECT_TRUE(std::any_of(
        recorder.changes.begin(), recorder.changes.end(),
        [](const QVariantMap& change) { return change.value(QStringLiteral("Moving")) == true; }));
    runMove();
    ASSERT_TRUE(delivered(
        [&] { return recorder.changes.back().value(QStringLiteral("Moving")) == false; }));
    double lastHeight = 0;
    for (const QVariantMap& change : recorder.changes)
        lastHeight = change.value(QStringLiteral("Height"), lastHeight).toDouble();
    EXPECT_NEAR(lastHeight, 100.0, 0.5);
}

TEST_F(DeskBusTest, StandingTimeIncludesTheOpenIntervalAndTheGoalIsWritable) {
    RecordedActivity activity;
    open({}, "72,110,0,0");
    ASSERT_EQ(call(QStringLiteral("MoveTo"), {110.0}).type(), QDBusMessage::ReplyMessage);
    runMove();
    advance(10min); // not yet saved: the last save was at most a minute ago
    EXPECT_NEAR(property("StandingToday").toDouble(), 600, 30);
    EXPECT_LT(property("SittingToday").toUInt(), 10u);
    EXPECT_EQ(property("StandingStreak").toUInt(), 0u);
    EXPECT_EQ(property("StandingThreshold").toDouble(), 91.0);

    QDBusMessage set = QDBusMessage::createMethodCall(
        QLatin1String(config::kDBusService), QLatin1String(config::kDeskPath),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
    set.setArguments({QLatin1String(config::kDeskInterface), QStringLiteral("StandingGoal"),
                      QVariant::fromValue(QDBusVariant(uint(4200)))});
    EXPECT_EQ(script.call(set, QDBus::BlockWithGui).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(property("StandingGoal").toUInt(), 4500u) << "rounded to 15 minutes";
    EXPECT_EQ(activity.recorder.goalMs(), 4500 * 1000);

    const QDBusMessage history = call(QStringLiteral("History"), {3u});
    ActivityDays days;
    history.arguments().value(0).value<QDBusArgument>() >> days;
    ASSERT_EQ(days.size(), 3);
    EXPECT_EQ(days.last().value(QStringLiteral("date")),
              activity.recorder.today().toString(Qt::ISODate));
    EXPECT_NEAR(days.last().value(QStringLiteral("standing_s")).toDouble(), 600, 30);
}

TEST_F(DeskBusTest, PresentFollowsTheUserAndIsAnnounced) {
    open();
    advance(DeskBusAdaptor::kChangeInterval);
    EXPECT_EQ(property("Present"), true);
    presence.setPresent(false);
    EXPECT_EQ(property("Present"), false);
    EXPECT_TRUE(delivered([&] {
        return !recorder.changes.empty() &&
               recorder.changes.back().value(QStringLiteral("Present")) == false;
    }));
}

TEST_F(DeskBusTest, IntrospectionMatchesTheInterfaceFileInTheRepository) {
    QFile file(QStringLiteral(OSTREL_DESK_INTERFACE_XML));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList expected = members(QString::fromUtf8(file.readAll()));
    ASSERT_FALSE(expected.isEmpty());

    QDBusMessage message = QDBusMessage::createMethodCall(
        QLatin1String(config::kDBusService), QLatin1String(config::kDeskPath),
        QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    const QDBusMessage reply = script.call(message, QDBus::BlockWithGui);
    EXPECT_EQ(members(reply.arguments().value(0).toString()), expected);
}

} // namespace
} // namespace ostrel::test

#include "DeskBusTest.moc"
