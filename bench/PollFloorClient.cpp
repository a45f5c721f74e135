// The floor of the poll path: the least any client does to answer a desk's keypad polls over
// BlueZ's acquired sockets. D-Bus only finds the desk, connects it and acquires the notify and
// write sockets; then one blocking loop reads each notification and answers a poll with the
// no-key frame. No frame cutting, no CRC check, no event loop.
//   poll-floor NAME NOTIFY_UUID WRITE_UUID      (the bus is DBUS_SYSTEM_BUS_ADDRESS)
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QThread>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using Objects = QMap<QDBusObjectPath, QMap<QString, QVariantMap>>;

QDBusMessage call(const QString& path, const char* interface, const char* method,
                  const QVariantList& arguments = {}) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("org.bluez"), path,
                                       QString::fromLatin1(interface), QString::fromLatin1(method));
    message.setArguments(arguments);
    return QDBusConnection::systemBus().call(message, QDBus::Block, 30000);
}

// The object carrying `interface` whose `key` reads `value` (any such object for an empty key),
// waiting up to 30 s for BlueZ to show it.
QString awaitObject(const char* interface, const char* key = "", const QString& value = {}) {
    for (int attempt = 0; attempt < 300; ++attempt, QThread::msleep(100)) {
        const QDBusMessage reply =
            call(QStringLiteral("/"), "org.freedesktop.DBus.ObjectManager", "GetManagedObjects");
        const Objects objects = qdbus_cast<Objects>(reply.arguments().value(0));
        for (auto it = objects.begin(); it != objects.end(); ++it) {
            const auto found = it->constFind(QString::fromLatin1(interface));
            if (found != it->constEnd() &&
                (!*key || found->value(QString::fromLatin1(key))
                                  .toString()
                                  .compare(value, Qt::CaseInsensitive) == 0))
                return it.key().path();
        }
    }
    qFatal("no %s with %s %s", interface, key, qPrintable(value));
}

int acquire(const QString& characteristic, const char* method) {
    const QDBusMessage reply =
        call(characteristic, "org.bluez.GattCharacteristic1", method, {QVariantMap()});
    const auto handed = qvariant_cast<QDBusUnixFileDescriptor>(reply.arguments().value(0));
    if (!handed.isValid())
        qFatal("%s: %s", method, qPrintable(reply.errorMessage()));
    return ::dup(handed.fileDescriptor());
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s NAME NOTIFY_UUID WRITE_UUID\n", argv[0]);
        return 2;
    }
    const QString adapter = awaitObject("org.bluez.Adapter1");
    call(adapter, "org.bluez.Adapter1", "StartDiscovery");
    const QString device =
        awaitObject("org.bluez.Device1", "Alias", QString::fromLocal8Bit(argv[1]));
    call(adapter, "org.bluez.Adapter1", "StopDiscovery");
    call(device, "org.bluez.Device1", "Connect");
    constexpr char kCharacteristic[] = "org.bluez.GattCharacteristic1";
    const int notify = acquire(awaitObject(kCharacteristic, "UUID", argv[2]), "AcquireNotify");
    const int write = acquire(awaitObject(kCharacteristic, "UUID", argv[3]), "AcquireWrite");
    std::puts("answering");
    std::fflush(stdout);

    static constexpr unsigned char kNoKey[] = {0x9B, 0x06, 0x02, 0x00, 0x00, 0x6C, 0xA1, 0x9D};
    constexpr unsigned char kPollType = 0x11; // after head and length
    unsigned char value[1024];
    for (;;) {
        const ssize_t size = ::recv(notify, value, sizeof value, 0);
        if (size <= 0)
            return 0; // the link is gone
        if (size > 2 && value[2] == kPollType)
            ::send(write, kNoKey, sizeof kNoKey, MSG_NOSIGNAL);
    }
}
