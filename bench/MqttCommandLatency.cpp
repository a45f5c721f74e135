// Time from a command published to the broker to the desk starting to move: a real Mosquitto
// broker, the bridge, and the virtual desk paced in real time (its 50 ms polls included).
// Run: build/bench/mqtt_command_latency (prints each sample and the median of 20).
#include "SessionTestSupport.h"
#include "app/RealTimeWait.h"
#include "homeautomation/DeskStatePublisher.h"
#include "homeautomation/HomeAutomationBridge.h"
#include "homeautomation/MosquittoBroker.h"
#include "homeautomation/MqttClient.h"
#include "platform/Platform.h"
#include "platform/SecretFileStore.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>

namespace ostrel::test {
namespace {

constexpr int kSamples = 20;

class MqttCommandLatency : public SessionTest {
protected:
    // Virtual time follows the wall clock in 1 ms steps while the events flow.
    bool paceUntil(const std::function<bool()>& condition, int timeoutMs) {
        QElapsedTimer wall;
        wall.start();
        const auto start = now();
        while (!condition()) {
            if (wall.elapsed() > timeoutMs)
                return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents);
            while (now() - start < std::chrono::milliseconds(wall.elapsed()))
                advance(1ms);
        }
        return true;
    }
};

TEST_F(MqttCommandLatency, PublishedTargetToFirstMovement) {
    MosquittoBroker broker(MosquittoBroker::Kind::Anonymous);
    ASSERT_TRUE(broker.start());
    VirtualDesk& desk = bindDesk();
    openControl();
    QTemporaryDir secrets;
    SecretFileStore fileSecrets(secrets.path());
    PlatformOverride<SecretStore> secretsHere(fileSecrets);
    HomeAutomationBridge bridge;
    Object_HomeAutomation settings;
    settings.mqttEnabled = "1";
    settings.mqttAllowControl = "1";
    settings.mqttHost = "127.0.0.1";
    settings.mqttPort = std::to_string(broker.port());
    bridge.applySettings(settings, std::nullopt);
    MqttClient ha;
    MqttClient::Options options;
    options.host = QStringLiteral("127.0.0.1");
    options.port = broker.port();
    options.clientId = QStringLiteral("home-assistant");
    ha.start(options);
    ASSERT_TRUE(paceUntil(
        [&] {
            return ha.state() == MqttClient::State::Connected &&
                   bridge.client().state() == MqttClient::State::Connected;
        },
        10000));
    const QString topic =
        QStringLiteral("ostrel-motion/%1/target_height/set").arg(bridge.publisher().liveDeskId());

    std::vector<double> samples;
    for (int i = 0; i < kSamples; ++i) {
        const QByteArray target = i % 2 ? "100" : "110";
        QElapsedTimer clock;
        clock.start();
        ha.publish(topic, target, false);
        ASSERT_TRUE(paceUntil([&] { return desk.isMoving(); }, 5000));
        samples.push_back(double(clock.nsecsElapsed()) / 1e6);
        std::printf("mosquitto_pub -t %s -m %s: %.1f ms\n", qPrintable(topic), target.constData(),
                    samples.back());
        ASSERT_TRUE(paceUntil(
            [&] { return !session().goToHeight().isMoving() && !desk.isMoving(); }, 20000));
    }
    std::sort(samples.begin(), samples.end());
    std::printf("median of %d: %.1f ms (min %.1f, max %.1f)\n", kSamples,
                (samples[kSamples / 2 - 1] + samples[kSamples / 2]) / 2, samples.front(),
                samples.back());
}

} // namespace
} // namespace ostrel::test
