// The desk interface on a private session bus: a script's connection calls the application's,
// which drives a virtual desk in virtual time.
#include "RealTimeWait.h"
#include "SessionTestSupport.h"
#include "app/AppConfig.h"
#include "app/DeskBusAdaptor.h"
#include "app/SingleInstance.h"
#include "session/HotKeyMovement.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>
#include <QXmlStreamReader>
#include <cmath>
#include <limits>
#include <tuple>

namespace ostrel::test {
namespace {

constexpr int kDeliveryWaitMs = 5000;

// Every PropertiesChanged the script's connection hears.
class ChangeRecorder : public QObject {
    Q_OBJECT
public:
    std::vector<QVariantMap> changes;

    bool any(const char* name, const QVariant& value) const {
        return std::any_of(changes.begin(), changes.end(), [&](const QVariantMap& change) {
            return change.value(QLatin1String(name)) == value;
        });
    }
    bool last(const char* name, const QVariant& value) const {
        return !changes.empty() && changes.back().value(QLatin1String(name)) == value;
    }

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

    void open(VirtualDeskConfig config = {}, const char* presets = "0,0,0,0") {
        desk = &bindDesk(std::move(config), presets);
        openControl();
    }

    // The answer comes from this very process: the call keeps its events flowing.
    QDBusMessage callOn(const char* interface, const QString& method,
                        const QVariantList& arguments = {}) {
        QDBusMessage message = QDBusMessage::createMethodCall(QLatin1String(config::kDBusService),
                                                              QLatin1String(config::kDeskPath),
                                                              QLatin1String(interface), method);
        message.setArguments(arguments);
        return script.call(message, QDBus::BlockWithGui);
    }
    QDBusMessage call(const char* method, const QVariantList& arguments = {}) {
        return callOn(config::kDeskInterface, method, arguments);
    }
    ::testing::AssertionResult answered(const char* method, const QVariantList& arguments = {}) {
        const QDBusMessage reply = call(method, arguments);
        if (reply.type() == QDBusMessage::ReplyMessage)
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure()
               << method << ": " << reply.errorMessage().toStdString();
    }
    QDBusMessage properties(const char* method, const QVariantList& arguments) {
        return callOn("org.freedesktop.DBus.Properties", method,
                      QVariantList{QLatin1String(config::kDeskInterface)} + arguments);
    }
    QVariant property(const char* name) {
        const QDBusMessage reply = properties("Get", {QLatin1String(name)});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    // Lets the bus deliver what has been sent: real time, bounded, ends on the condition.
    static bool delivered(const std::function<bool()>& condition) {
        return waitUntil(condition, kDeliveryWaitMs);
    }

    void expectNothingHeld() const {
        EXPECT_EQ(handle().currentCommandType(), command::kNoKey);
        EXPECT_FALSE(desk->isMoving());
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
    void openOnPath() { open({.ignoresTargetHeight = GetParam()}); }
    // A scripted move on this path, `runFor` under way.
    void moveOnPathFor(double cm, std::chrono::milliseconds runFor) {
        openOnPath();
        ASSERT_TRUE(answered("MoveTo", {cm}));
        advance(runFor);
    }
};

TEST_P(DeskBusPathTest, MoveToArrivesWithinHalfACentimetre) {
    openOnPath();
    for (const double cm : {110.0, 68.5}) {
        ASSERT_TRUE(answered("MoveTo", {cm}));
        EXPECT_TRUE(property("Moving").toBool());
        finishMove();
        const int target = int(cm * 10);
        EXPECT_LE(std::abs(desk->heightTenths() - target), 5) << cm;
        EXPECT_NEAR(property("Height").toDouble(), cm, 0.5);
        expectNothingHeld();
    }
}

TEST_P(DeskBusPathTest, StopHaltsTheDeskWithinOnePoll) {
    ASSERT_NO_FATAL_FAILURE(moveOnPathFor(115.0, 2500ms));
    ASSERT_TRUE(desk->isMoving());
    ASSERT_TRUE(answered("Stop"));
    advance(desk->config().pollPeriod);
    expectNothingHeld();
    EXPECT_LT(desk->heightTenths(), 1100);
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
    const std::pair<const char*, QVariantList> unlinked[] = {
        {"MoveTo", {100.0}}, {"RecallPreset", {"sit"}}, {"Stop", {}},   {"Up", {}},
        {"Down", {}},        {"Release", {}},           {"Connect", {}}};
    for (const auto& [method, arguments] : unlinked)
        EXPECT_EQ(call(method, arguments).errorName(), config::kNotConnectedError) << method;
    EXPECT_FALSE(property("Connected").toBool());

    open({}, "72,0,0,0");
    const QString invalid = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");
    // A method, its argument, the error it gets and what the error's message mentions.
    const std::tuple<const char*, QVariant, QString, const char*> bad[] = {
        {"MoveTo", std::numeric_limits<double>::quiet_NaN(), invalid, "number"},
        {"MoveTo", std::numeric_limits<double>::infinity(), invalid, "number"},
        {"MoveTo", 200.0, invalid, "120.0cm"},
        {"MoveTo", 59.9, invalid, "60.0cm"},
        {"RecallPreset", QStringLiteral("desk"), invalid, "sit, stand, m1 or m2"},
        {"RecallPreset", QStringLiteral("m1"), config::kPresetNotSetError, "m1"},
    };
    for (const auto& [method, argument, error, mentions] : bad) {
        const QDBusMessage reply = call(method, {argument});
        EXPECT_EQ(reply.errorName(), error) << method << " " << argument.toString().toStdString();
        EXPECT_TRUE(reply.errorMessage().contains(QLatin1String(mentions)))
            << reply.errorMessage().toStdString();
        advance(200ms);
        expectNothingHeld();
    }

    // A good preset still works afterwards.
    ASSERT_TRUE(answered("RecallPreset", {QStringLiteral("SIT")}));
    finishMove();
    EXPECT_LE(std::abs(desk->heightTenths() - 720), 5);
}

// Up and Down are the hot keys' toggle: the other direction stops rather than reverses, and
// a movement nobody stops ends at the end stop by the hot keys' stall watchdog.
TEST_F(DeskBusTest, UpAndDownToggleAsTheHotKeysAndEndByTheirWatchdog) {
    open();
    const auto press = [&](const char* method) {
        const QDBusMessage reply = call(method);
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

TEST_F(DeskBusTest, PropertyChangesArriveAFewTimesASecondWhileMovingAndPresenceIsAnnounced) {
    open({}, "72,110,0,0");
    ASSERT_TRUE(delivered([&] { return recorder.any("Connected", true); }));
    EXPECT_EQ(property("DeskName").toString(), kDeskName);
    EXPECT_EQ(property("Unit").toString(), QStringLiteral("cm"));
    EXPECT_EQ(property("Present"), true);

    recorder.changes.clear();
    ASSERT_TRUE(answered("MoveTo", {100.0}));
    advance(2s); // about 7.6 cm, a new height on every poll
    ASSERT_TRUE(delivered([&] { return recorder.changes.size() >= 8; }));
    EXPECT_LE(recorder.changes.size(), std::size_t(2s / DeskBusAdaptor::kChangeInterval + 2));
    EXPECT_TRUE(recorder.any("Moving", true));
    finishMove();
    ASSERT_TRUE(delivered([&] { return recorder.last("Moving", false); }));
    double lastHeight = 0;
    for (const QVariantMap& change : recorder.changes)
        lastHeight = change.value(QStringLiteral("Height"), lastHeight).toDouble();
    EXPECT_NEAR(lastHeight, 100.0, 0.5);

    presence.setPresent(false);
    EXPECT_EQ(property("Present"), false);
    EXPECT_TRUE(delivered([&] { return recorder.last("Present", false); }));
}

TEST_F(DeskBusTest, StandingTimeIncludesTheOpenIntervalAndTheGoalIsWritable) {
    RecordedActivity activity;
    open({}, "72,110,0,0");
    ASSERT_TRUE(answered("MoveTo", {110.0}));
    finishMove();
    advance(10min); // not yet saved: the last save was at most a minute ago
    EXPECT_NEAR(property("StandingToday").toDouble(), 600, 30);
    EXPECT_LT(property("SittingToday").toUInt(), 10u);
    EXPECT_EQ(property("StandingStreak").toUInt(), 0u);
    EXPECT_EQ(property("StandingThreshold").toDouble(), 91.0);

    EXPECT_EQ(properties("Set", {QStringLiteral("StandingGoal"),
                                 QVariant::fromValue(QDBusVariant(uint(4200)))})
                  .type(),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(property("StandingGoal").toUInt(), 4500u) << "rounded to 15 minutes";
    EXPECT_EQ(activity.recorder.goalMs(), 4500 * 1000);

    const QDBusMessage history = call("History", {3u});
    ActivityDays days;
    history.arguments().value(0).value<QDBusArgument>() >> days;
    ASSERT_EQ(days.size(), 3);
    EXPECT_EQ(days.last().value(QStringLiteral("date")),
              activity.recorder.today().toString(Qt::ISODate));
    EXPECT_NEAR(days.last().value(QStringLiteral("standing_s")).toDouble(), 600, 30);
}

TEST_F(DeskBusTest, IntrospectionMatchesTheInterfaceFileInTheRepository) {
    QFile file(QStringLiteral(OSTREL_DESK_INTERFACE_XML));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList expected = members(QString::fromUtf8(file.readAll()));
    ASSERT_FALSE(expected.isEmpty());

    const QDBusMessage reply = callOn("org.freedesktop.DBus.Introspectable", "Introspect");
    EXPECT_EQ(members(reply.arguments().value(0).toString()), expected);
}

} // namespace
} // namespace ostrel::test

#include "DeskBusTest.moc"
