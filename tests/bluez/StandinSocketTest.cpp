#include "BluezTestSupport.h"
#include "core/PacketSocket.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <fcntl.h>

namespace ostrel::test {
namespace {

using Objects = QMap<QDBusObjectPath, QMap<QString, QVariantMap>>;

QDBusMessage bluez(const QString& path, const QString& interface, const QString& method,
                   const QVariantList& arguments = {}) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(QStringLiteral("org.bluez"), path, interface, method);
    call.setArguments(arguments);
    return StandinBus::instance().call(call);
}

Objects managedObjects() {
    return qdbus_cast<Objects>(bluez(QStringLiteral("/"),
                                     QStringLiteral("org.freedesktop.DBus.ObjectManager"),
                                     QStringLiteral("GetManagedObjects"))
                                   .arguments()
                                   .value(0));
}

using StandinSocketTest = BluezTest;

// The stand-in's sockets as a client of BlueZ's own interface sees them: the MTU the desk
// was given, notifications as packets, and a hang-up when the link ends.
TEST_F(StandinSocketTest, AcquiredNotifySocketCarriesPacketsAndHangsUpWithTheLink) {
    const QString adapter = QStringLiteral("/org/bluez/hci0");
    const QString name = QStringLiteral("QWJ-4201");
    addDesk(name, 2, {{QStringLiteral("mtu"), 185}});
    bluez(adapter, QStringLiteral("org.bluez.Adapter1"), QStringLiteral("StartDiscovery"));
    QString device;
    ASSERT_TRUE(waitFor([&] {
        const Objects objects = managedObjects();
        for (auto it = objects.begin(); it != objects.end(); ++it) {
            if (it.value().value(QStringLiteral("org.bluez.Device1")).value("Name") == name)
                device = it.key().path();
        }
        return !device.isEmpty();
    }));
    bluez(adapter, QStringLiteral("org.bluez.Adapter1"), QStringLiteral("StopDiscovery"));
    ASSERT_EQ(bluez(device, QStringLiteral("org.bluez.Device1"), QStringLiteral("Connect")).type(),
              QDBusMessage::ReplyMessage);

    QString notifyPath;
    const Objects objects = managedObjects();
    for (auto it = objects.begin(); it != objects.end(); ++it) {
        const QVariantMap c = it.value().value(QStringLiteral("org.bluez.GattCharacteristic1"));
        if (it.key().path().startsWith(device) && c.value("UUID").toString().startsWith("00002a37"))
            notifyPath = it.key().path();
    }
    const QDBusMessage reply = bluez(notifyPath, QStringLiteral("org.bluez.GattCharacteristic1"),
                                     QStringLiteral("AcquireNotify"), {QVariantMap()});
    ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    EXPECT_EQ(reply.arguments().value(1).toUInt(), 185u);
    const auto handed = qvariant_cast<QDBusUnixFileDescriptor>(reply.arguments().value(0));
    PacketSocket socket(::fcntl(handed.fileDescriptor(), F_DUPFD_CLOEXEC, 0));
    int packets = 0;
    bool hungUp = false;
    QObject::connect(&socket, &PacketSocket::received, [&](const QByteArray& packet) {
        EXPECT_EQ(static_cast<unsigned char>(packet.at(0)), 0x9B); // a whole frame each time
        ++packets;
    });
    QObject::connect(&socket, &PacketSocket::hungUp, [&] { hungUp = true; });
    ASSERT_TRUE(waitFor([&] { return packets > 0; }));
    // Only one holder at a time, as bluetoothd has it.
    EXPECT_EQ(bluez(notifyPath, QStringLiteral("org.bluez.GattCharacteristic1"),
                    QStringLiteral("StartNotify"))
                  .errorName(),
              QStringLiteral("org.bluez.Error.NotPermitted"));

    control(QStringLiteral("DropLink"), {name});
    ASSERT_TRUE(waitFor([&] { return hungUp; }));
}

} // namespace
} // namespace ostrel::test
