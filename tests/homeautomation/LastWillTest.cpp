// The real application, provisioned by file before its first start and killed without warning:
// the broker tells Home Assistant it is gone.
#include "HomeAssistant.h"

#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace ostrel::test {
namespace {

// As an administrator would write it.
QByteArray provisionedSettings(int port) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><array><dict>
  <key>mqttEnabled</key><string>1</string> <key>mqttAllowControl</key><string>0</string>
  <key>mqttHost</key><string>127.0.0.1</string> <key>mqttPort</key><string>)" +
           QByteArray::number(port) + "</string>\n</dict></array></plist>\n";
}

TEST(LastWillTest, TheBrokerSaysOfflineWhenTheApplicationIsKilled) {
    constexpr int kAppWaitMs = 20000;
    MosquittoBroker broker(MosquittoBroker::Kind::Anonymous);
    ASSERT_TRUE(broker.start()) << broker.log().toStdString();
    QTemporaryDir home;
    const QString data = home.filePath(QStringLiteral("data/ostrel/ostrel-motion"));
    ASSERT_TRUE(QDir().mkpath(data));
    QFile settings(data + QStringLiteral("/HomeAutomation.plist"));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write(provisionedSettings(broker.port()));
    settings.close();
    HomeAssistant ha(broker);

    QProcess app;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* folder : {"data", "config", "cache"})
        environment.insert(QStringLiteral("XDG_%1_HOME").arg(QString(folder).toUpper()),
                           home.filePath(folder));
    app.setProcessEnvironment(environment);
    app.start(QStringLiteral(OSTREL_MOTION_BINARY),
              {QStringLiteral("--demo"), QStringLiteral("--hidden")});
    const auto says = [&](const char* availability) {
        return ha.heardOn("ostrel-motion/", "/availability").values() ==
               QByteArrayList{availability};
    };
    ASSERT_TRUE(waitUntil([&] { return says("online"); }, kAppWaitMs))
        << app.readAllStandardError().toStdString();

    app.kill();
    app.waitForFinished();
    EXPECT_TRUE(waitUntil([&] { return says("offline"); }, kAppWaitMs));
}

} // namespace
} // namespace ostrel::test
