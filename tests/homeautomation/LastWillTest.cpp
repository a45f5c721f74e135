// The real application, provisioned by file before its first start, killed without warning:
// the broker tells Home Assistant it is gone.
#include "MosquittoBroker.h"
#include "app/RealTimeWait.h"
#include "homeautomation/MqttClient.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace ostrel::test {
namespace {

constexpr int kWaitMs = 20000;

// As an administrator would write it.
QByteArray provisionedSettings(int port) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<array>
  <dict>
    <key>mqttEnabled</key><string>1</string>
    <key>mqttAllowControl</key><string>0</string>
    <key>mqttHost</key><string>127.0.0.1</string>
    <key>mqttPort</key><string>)" +
           QByteArray::number(port) + R"(</string>
  </dict>
</array>
</plist>
)";
}

TEST(LastWillTest, TheBrokerSaysOfflineWhenTheApplicationIsKilled) {
    MosquittoBroker broker(MosquittoBroker::Kind::Anonymous);
    ASSERT_TRUE(broker.start()) << broker.log().toStdString();
    QTemporaryDir home;
    const QString data = home.filePath(QStringLiteral("data/ostrel/ostrel-motion"));
    ASSERT_TRUE(QDir().mkpath(data));
    QFile settings(data + QStringLiteral("/HomeAutomation.plist"));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write(provisionedSettings(broker.port()));
    settings.close();

    MqttClient watcher;
    QString availability;
    QByteArray said;
    QObject::connect(&watcher, &MqttClient::messageReceived,
                     [&](const QString& topic, const QByteArray& payload, bool) {
                         availability = topic;
                         said = payload;
                     });
    MqttClient::Options options;
    options.host = QStringLiteral("127.0.0.1");
    options.port = broker.port();
    options.clientId = QStringLiteral("watcher");
    watcher.start(options);
    ASSERT_TRUE(
        waitUntil([&] { return watcher.state() == MqttClient::State::Connected; }, kWaitMs));
    watcher.subscribe(QStringLiteral("ostrel-motion/+/availability"));

    QProcess app;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), home.filePath(QStringLiteral("data")));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.filePath(QStringLiteral("config")));
    environment.insert(QStringLiteral("XDG_CACHE_HOME"), home.filePath(QStringLiteral("cache")));
    app.setProcessEnvironment(environment);
    app.start(QStringLiteral(OSTREL_MOTION_BINARY),
              {QStringLiteral("--demo"), QStringLiteral("--hidden")});
    ASSERT_TRUE(waitUntil([&] { return said == "online"; }, kWaitMs))
        << app.readAllStandardError().toStdString();

    app.kill();
    app.waitForFinished();
    EXPECT_TRUE(waitUntil([&] { return said == "offline"; }, kWaitMs));
    EXPECT_TRUE(availability.startsWith(QLatin1String("ostrel-motion/")));
}

} // namespace
} // namespace ostrel::test
