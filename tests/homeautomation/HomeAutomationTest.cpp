// The bridge against real Mosquitto brokers, driving a virtual desk in virtual time; the
// broker, and the other side standing in for Home Assistant, run in real time.
#include "HomeAssistant.h"
#include "SessionTestSupport.h"
#include "homeautomation/DeskStatePublisher.h"
#include "homeautomation/HomeAutomationBridge.h"
#include "platform/Platform.h"
#include "platform/SecretFileStore.h"
#include "settings/ViewHomeAutomation.h"
#include "store/DQDataCatchHelper.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/WidgetTestSupport.h"

#include <QCheckBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <set>

namespace ostrel::test {
namespace {

constexpr int kConfigsPerDesk = 11;

class HomeAutomationTest : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        ASSERT_TRUE(secrets.isValid());
    }

    void TearDown() override {
        bridge.reset();
        homeAssistant.reset();
        server.reset();
        SessionTest::TearDown();
    }

    // The bridge on, pointed at `broker`, with `password` in the secret store.
    void startBridge(const MosquittoBroker& broker, bool allowControl,
                     const QString& password = MosquittoBroker::kPassword, bool tls = false) {
        bridge = std::make_unique<HomeAutomationBridge>();
        bridge->applySettings({.mqttEnabled = "1",
                               .mqttAllowControl = allowControl ? "1" : "0",
                               .mqttHost = "localhost",
                               .mqttPort = std::to_string(broker.port()),
                               .mqttUser = MosquittoBroker::kUser.toStdString(),
                               .mqttTls = tls ? "1" : "0",
                               .mqttCaFile = broker.caFile().toStdString()},
                              password);
    }

    bool bridgeReaches(MqttClient::State state) {
        return waitUntil([&] { return bridge->client().state() == state; }, kNetworkWaitMs);
    }

    void openDesk() {
        desk = &bindDesk({}, "72,0,0,0");
        openControl();
    }

    QString deskTopic(const char* leaf, const QString& id = {}) const {
        return QStringLiteral("ostrel-motion/%1/%2")
            .arg(id.isEmpty() ? deskId : id, QLatin1String(leaf));
    }

    // Sends a command as Home Assistant does and waits until the bridge has dealt with it:
    // whether it was carried out, or nothing when it never arrived.
    std::optional<bool> command(HomeAssistant& ha, const char* leaf, const QByteArray& payload,
                                const QString& id = {}) {
        QSignalSpy handled(bridge.get(), &HomeAutomationBridge::commandHandled);
        ha.client.publish(deskTopic(leaf, id), payload, false);
        if (!waitUntil([&] { return !handled.isEmpty(); }, kNetworkWaitMs))
            return std::nullopt;
        return handled.first().first().toBool();
    }

    // The bridge has subscribed before it publishes, and the broker keeps a client's order.
    void awaitBridge(HomeAssistant& ha) {
        ha.heard.clear();
        ASSERT_TRUE(bridgeReaches(MqttClient::State::Connected));
        ASSERT_TRUE(ha.hears(bridge->availabilityTopic(), "online"));
        deskId = bridge->publisher().liveDeskId();
        ASSERT_TRUE(ha.hears(deskTopic("connected"), "ON"));
    }

    // A broker, Home Assistant on it, and the bridge, for a desk open on the control screen.
    void connectBridge(bool allowControl = true) {
        server = std::make_unique<MosquittoBroker>(MosquittoBroker::Kind::Password);
        ASSERT_TRUE(server->start()) << server->log().toStdString();
        openDesk();
        homeAssistant = std::make_unique<HomeAssistant>(*server);
        startBridge(*server, allowControl);
        ASSERT_NO_FATAL_FAILURE(awaitBridge(*homeAssistant));
    }

    QTemporaryDir secrets;
    SecretFileStore fileSecrets{secrets.path()};
    PlatformOverride<SecretStore> secretsHere{fileSecrets};
    std::unique_ptr<MosquittoBroker> server;
    std::unique_ptr<HomeAssistant> homeAssistant;
    std::unique_ptr<HomeAutomationBridge> bridge;
    VirtualDesk* desk = nullptr;
    QString deskId;
};

TEST_F(HomeAutomationTest, DiscoveryNamesEveryEntityWithWhatHomeAssistantNeeds) {
    ASSERT_NO_FATAL_FAILURE(connectBridge(false));
    HomeAssistant& ha = *homeAssistant;
    ASSERT_TRUE(waitUntil([&] { return ha.heardOn("homeassistant/").size() == kConfigsPerDesk; },
                          kNetworkWaitMs));

    QStringList components;
    const QHash<QString, QByteArray> configs = ha.heardOn("homeassistant/");
    for (auto it = configs.begin(); it != configs.end(); ++it) {
        QJsonParseError error{};
        const QJsonObject config = QJsonDocument::fromJson(it.value(), &error).object();
        ASSERT_EQ(error.error, QJsonParseError::NoError) << it.key().toStdString();
        components << it.key().section(QLatin1Char('/'), 1, 1);
        EXPECT_EQ(config["availability_topic"].toString(), bridge->availabilityTopic());
        EXPECT_TRUE(config["unique_id"].toString().startsWith(deskId));
        const QJsonObject device = config["device"].toObject();
        EXPECT_EQ(device["name"].toString(), kDeskName);
        EXPECT_EQ(device["connections"].toArray()[0].toArray()[1].toString(),
                  peripheral->identifierString());
        const QString topic = config["state_topic"].toString(config["command_topic"].toString());
        EXPECT_TRUE(topic.startsWith(deskTopic(""))) << it.key().toStdString();
    }
    components.sort();
    EXPECT_EQ(components.join(QLatin1Char(' ')),
              QStringLiteral("binary_sensor binary_sensor button button button button button "
                             "number sensor sensor sensor"));
    const QString height =
        QStringLiteral("homeassistant/number/%1/target_height/config").arg(deskId);
    const QJsonObject number = QJsonDocument::fromJson(configs.value(height)).object();
    EXPECT_EQ(number["min"].toDouble(), 60.0);
    EXPECT_EQ(number["max"].toDouble(), 120.0);
    EXPECT_EQ(number["step"].toDouble(), 0.5);
}

TEST_F(HomeAutomationTest, CommandsMoveTheDeskOnlyWhenAllowedAndStopAlways) {
    MosquittoBroker broker(MosquittoBroker::Kind::Password);
    ASSERT_TRUE(broker.start()) << broker.log().toStdString();
    openDesk();
    // A second paired desk, out of reach: its entities, but no commands.
    const QString otherAddress = QStringLiteral("AA:BB:CC:DD:EE:02");
    OMPlistManager::saveBindDeviceWithDevice(
        toPropertyForm(CurrentDeviceStore::freshRecord(QStringLiteral("QWJ-0002"), otherAddress)));
    HomeAssistant ha(broker);
    startBridge(broker, false);
    ASSERT_NO_FATAL_FAILURE(awaitBridge(ha));
    const QString other = DeskEntities::idFor(otherAddress);
    EXPECT_TRUE(ha.hears(deskTopic("connected", other), "OFF"));

    // Control off: reported, not obeyed; but a stop is always obeyed.
    EXPECT_EQ(command(ha, "target_height/set", "100"), false);
    EXPECT_EQ(command(ha, "sit/press", "PRESS"), false);
    EXPECT_EQ(command(ha, "stop/press", "PRESS"), true);
    advance(500ms);
    EXPECT_FALSE(desk->isMoving());

    startBridge(broker, true);
    ASSERT_NO_FATAL_FAILURE(awaitBridge(ha));
    ASSERT_EQ(command(ha, "target_height/set", "100"), true);
    advance(300ms);
    EXPECT_TRUE(ha.hears(deskTopic("moving"), "ON"));
    finishMove();
    EXPECT_LE(std::abs(desk->heightTenths() - 1000), 5);
    EXPECT_TRUE(ha.hears(deskTopic("moving"), "OFF"));
    EXPECT_NEAR(ha.heard.value(deskTopic("height")).toDouble(), 100.0, 0.5);

    // Bad values: refused, nothing held.
    for (const QByteArray& bad : {QByteArray("abc"), QByteArray(), QByteArray("200"),
                                  QByteArray("nan"), QByteArray(100000, '7')}) {
        EXPECT_EQ(command(ha, "target_height/set", bad), false) << bad.left(10).toStdString();
        advance(200ms);
        EXPECT_FALSE(desk->isMoving());
        EXPECT_EQ(handle().currentCommandType(), command::kNoKey);
    }
    EXPECT_EQ(command(ha, "m1/press", "PRESS"), false); // not set
    EXPECT_EQ(command(ha, "sit/press", "PRESS", other), false);

    // How a stop ends a move is KeySourcesTest's; here it ends a hold on the screen below.
    ASSERT_EQ(command(ha, "sit/press", "PRESS"), true);
    advance(2s);
    EXPECT_TRUE(desk->isMoving());
}

// The screen holds a key when a command comes: the command's claim ends the screen's hold, so
// every poll from then on is answered for the command alone and letting go of the button later
// changes nothing. Stop ends a hold on the screen as it ends a move.
TEST_F(HomeAutomationTest, ACommandTakesTheKeyFromAHoldOnTheScreen) {
    ASSERT_NO_FATAL_FAILURE(connectBridge());
    HomeAssistant& ha = *homeAssistant;

    struct Case {
        HomeFunctionBtn* button;
        const char* leaf;
        QByteArray payload;
        std::set<int> keys; // what the polls after the command were answered with, but no key
        int arrivesAt;      // tenths of a centimetre, 0 where the desk stops where it is
    };
    const Case cases[] = {
        {control->upButton(), "target_height/set", "65", {command::kTargetHeight}, 650},
        {control->downButton(), "stop/press", "PRESS", {}, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.leaf);
        press(c.button);
        advance(500ms);
        ASSERT_TRUE(desk->isMoving());
        const std::size_t from = desk->keyFrames().size();
        ASSERT_EQ(command(ha, c.leaf, c.payload), true);
        advance(1s);
        release(c.button);
        finishMove();
        const int height = desk->heightTenths();
        advance(1s);
        EXPECT_FALSE(desk->isMoving());
        EXPECT_EQ(desk->heightTenths(), height);
        if (c.arrivesAt) {
            EXPECT_LE(std::abs(height - c.arrivesAt), 5);
        }
        const std::vector<int> answers = answersSince(*desk, from);
        std::set<int> keys(answers.begin(), answers.end());
        keys.erase(command::kNoKey);
        EXPECT_EQ(keys, c.keys);
    }
    EXPECT_EQ(handle().currentCommandType(), command::kNoKey);
}

// The record's minutes at this desk, in the desk's device: news once a minute at most, however
// often the desk reports its height (some 12000 times in these ten minutes).
TEST_F(HomeAutomationTest, MinutesStoodAndSatTodayFollowTheRecord) {
    RecordedActivity activity;
    ASSERT_NO_FATAL_FAILURE(connectBridge());
    HomeAssistant& ha = *homeAssistant;
    ASSERT_TRUE(ha.hears(deskTopic("standing_today"), "0"));

    ASSERT_EQ(command(ha, "target_height/set", "110"), true);
    finishMove();
    ha.times.clear();
    advance(10min);
    // Told at the minute's tick: at most a minute behind.
    const auto standing = [&] { return ha.heard.value(deskTopic("standing_today")).toInt(); };
    EXPECT_TRUE(waitUntil([&] { return standing() >= 9; }, kNetworkWaitMs));
    EXPECT_LE(standing(), 10);
    EXPECT_TRUE(ha.hears(deskTopic("sitting_today"), "0"));
    EXPECT_LE(ha.times.value(deskTopic("standing_today")), 10);
    EXPECT_EQ(ha.times.value(deskTopic("sitting_today")), 0);
}

// As the user sets it up on the page.
TEST_F(HomeAutomationTest, AWrongPasswordIsShownOnThePageAndNotRetried) {
    MosquittoBroker broker(MosquittoBroker::Kind::Password);
    ASSERT_TRUE(broker.start()) << broker.log().toStdString();
    bridge = std::make_unique<HomeAutomationBridge>();
    bridge->start();
    ViewHomeAutomation page(nullptr, *bridge);
    EXPECT_EQ(page.statusLabel()->text(), QStringLiteral("Off"));
    page.enabledBox()->setChecked(true);
    page.hostField()->setText(QStringLiteral("localhost"));
    page.portField()->setText(QString::number(broker.port()));
    page.userField()->setText(MosquittoBroker::kUser);
    QTest::keyClicks(page.passwordField(), QStringLiteral("wrong"));
    page.actionSave();

    ASSERT_TRUE(bridgeReaches(MqttClient::State::Refused));
    EXPECT_EQ(page.statusLabel()->text(),
              QStringLiteral("The broker refused the user name or password."));
    const qsizetype attempts = broker.log().count("New connection from");
    advance(10min);
    QCoreApplication::processEvents();
    EXPECT_EQ(bridge->client().state(), MqttClient::State::Refused);
    EXPECT_EQ(broker.log().count("New connection from"), attempts);

    // The password went to the secret store (tests/platform checks how it keeps it), not into
    // the settings.
    EXPECT_TRUE(QFile::exists(fileSecrets.pathFor(QStringLiteral("mqtt"))));
    QFile settings(DQDataCatchHelper::getDocPath() + QStringLiteral("/HomeAutomation.plist"));
    ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
    const QByteArray stored = settings.readAll();
    EXPECT_TRUE(stored.contains("<string>desk</string>"));
    EXPECT_FALSE(stored.contains("wrong"));

    // Saved again with the right password, the same settings connect.
    QTest::keyClicks(page.passwordField(), MosquittoBroker::kPassword);
    page.actionSave();
    ASSERT_TRUE(bridgeReaches(MqttClient::State::Connected));
    EXPECT_EQ(page.statusLabel()->text(), QStringLiteral("Connected to localhost."));
}

TEST_F(HomeAutomationTest, ABrokerThatComesLaterOrRestartsGetsEverythingAgain) {
    MosquittoBroker broker(MosquittoBroker::Kind::Password);
    openDesk();
    startBridge(broker, true);
    ASSERT_TRUE(bridgeReaches(MqttClient::State::Retrying));
    ASSERT_TRUE(broker.start()) << broker.log().toStdString();
    advance(MqttClient::kFirstRetry);
    {
        HomeAssistant ha(broker);
        ASSERT_NO_FATAL_FAILURE(awaitBridge(ha));
        ASSERT_EQ(command(ha, "target_height/set", "110"), true);
    }
    advance(1s);
    ASSERT_TRUE(desk->isMoving());

    // The broker restarts (persistence off: it forgets every retained message) mid-move.
    broker.stop();
    ASSERT_TRUE(bridgeReaches(MqttClient::State::Retrying));
    ASSERT_TRUE(broker.start());
    advance(MqttClient::kFirstRetry);
    ASSERT_TRUE(bridgeReaches(MqttClient::State::Connected));
    HomeAssistant ha(broker);
    finishMove();
    EXPECT_LE(std::abs(desk->heightTenths() - 1100), 5);
    EXPECT_TRUE(ha.hears(bridge->availabilityTopic(), "online"));
    EXPECT_TRUE(ha.hears(deskTopic("height"), "110.0"));
    EXPECT_TRUE(waitUntil([&] { return ha.heardOn("homeassistant/").size() == kConfigsPerDesk; },
                          kNetworkWaitMs));
}

TEST_F(HomeAutomationTest, TlsWithATestAuthority) {
    MosquittoBroker broker(MosquittoBroker::Kind::Tls);
    ASSERT_TRUE(broker.start()) << broker.log().toStdString();
    startBridge(broker, false, {}, true);
    ASSERT_TRUE(bridgeReaches(MqttClient::State::Connected)) << bridge->statusText().toStdString();
    HomeAssistant ha(broker, true);
    EXPECT_TRUE(ha.hears(bridge->availabilityTopic(), "online"));
}

} // namespace
} // namespace ostrel::test
