#include "platform/BluezAccess.h"

#include "bluez/StandinBus.h"

#include <QProcess>

namespace ostrel::test {
namespace {

// The stand-in plays BlueZ on this process's system bus; refusing is its bus policy for a user
// outside the allowed group.
TEST(BluezAccessTest, TellsARefusingBlueZFromAWorkingOne) {
    EXPECT_EQ(BluezAccess::check(), BluezAccess::NoProblem);
    StandinBus& standin = StandinBus::instance();
    ASSERT_EQ(standin.control(QStringLiteral("SetRefuseAccess"), {true}).type(),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(BluezAccess::check(), BluezAccess::Refused);
    standin.control(QStringLiteral("SetRefuseAccess"), {false});
    EXPECT_EQ(BluezAccess::check(), BluezAccess::NoProblem);
}

TEST(BluezAccessTest, ABusWithoutBlueZMeansItIsNotRunning) {
    QProcess bus;
    bus.start(QStringLiteral(OSTREL_DBUS_DAEMON),
              {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
               QStringLiteral("--config-file=" OSTREL_STANDIN_BUS_CONFIG)});
    ASSERT_TRUE(bus.waitForReadyRead(10000));
    const QString address = QString::fromLatin1(bus.readLine()).trimmed();
    {
        const QDBusConnection empty =
            QDBusConnection::connectToBus(address, QStringLiteral("empty"));
        ASSERT_TRUE(empty.isConnected());
        EXPECT_EQ(BluezAccess::check(empty), BluezAccess::NotRunning);
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("empty"));
    EXPECT_EQ(BluezAccess::check(QDBusConnection(QStringLiteral("never connected"))),
              BluezAccess::NotRunning);
    bus.kill();
    bus.waitForFinished();
}

} // namespace
} // namespace ostrel::test
