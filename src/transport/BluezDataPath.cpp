#include "BluezDataPath.h"

#include "BluetoothUuid.h"
#include "core/PacketReader.h"
#include "core/PacketSender.h"
#include "core/PacketSocket.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QMetaObject>
#include <fcntl.h>
#include <unistd.h>

namespace ostrel {

namespace {

using Interfaces = QMap<QString, QVariantMap>;
using Objects = QMap<QDBusObjectPath, Interfaces>;

constexpr char kService[] = "org.bluez";
constexpr char kDevice[] = "org.bluez.Device1";
constexpr char kGattService[] = "org.bluez.GattService1";
constexpr char kCharacteristic[] = "org.bluez.GattCharacteristic1";

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

QDBusMessage bluezCall(const QString& path, const char* interface, const char* method) {
    return QDBusMessage::createMethodCall(text(kService), path, text(interface), text(method));
}

QDBusMessage writeValueCall(const QString& path, const QByteArray& value) {
    QDBusMessage call = bluezCall(path, kCharacteristic, "WriteValue");
    call << value << QVariantMap{{QStringLiteral("type"), QStringLiteral("command")}};
    return call;
}

// The descriptor a reply hands over, duplicated (the handed one closes with the message); -1
// when there is none.
int descriptorIn(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ReplyMessage)
        return -1;
    const auto handed = qvariant_cast<QDBusUnixFileDescriptor>(reply.arguments().value(0));
    return handed.isValid() ? ::fcntl(handed.fileDescriptor(), F_DUPFD_CLOEXEC, 0) : -1;
}

QString devicePathOf(const Objects& objects, const QString& address) {
    for (auto it = objects.begin(); it != objects.end(); ++it) {
        const QVariantMap device = it.value().value(text(kDevice));
        if (device.value(QStringLiteral("Address"))
                .toString()
                .compare(address, Qt::CaseInsensitive) == 0)
            return it.key().path();
    }
    return {};
}

} // namespace

BluezDataPath::BluezDataPath(const QDBusConnection& bus, const QString& address, QObject* parent)
    : QObject(parent), m_bus(bus), m_address(address) {}

BluezDataPath::~BluezDataPath() = default;

void BluezDataPath::callWithReply(const QDBusMessage& call,
                                  std::function<void(const QDBusMessage&)> reply) {
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, reply = std::move(reply)] {
        watcher->deleteLater();
        reply(watcher->reply());
    });
}

void BluezDataPath::resolve(std::function<void()> done) {
    m_waiting.push_back(std::move(done));
    if (m_resolution == Resolution::Done) {
        QMetaObject::invokeMethod(this, &BluezDataPath::finishResolving, Qt::QueuedConnection);
        return;
    }
    if (m_resolution == Resolution::Running)
        return;
    m_resolution = Resolution::Running;
    callWithReply(
        QDBusMessage::createMethodCall(text(kService), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus.ObjectManager"),
                                       QStringLiteral("GetManagedObjects")),
        [this](const QDBusMessage& reply) { objectsArrived(reply); });
}

void BluezDataPath::objectsArrived(const QDBusMessage& reply) {
    // Without BlueZ's tree (another stack, or none) QtBluetooth's path carries everything.
    const Objects objects = reply.type() == QDBusMessage::ReplyMessage
                                ? qdbus_cast<Objects>(reply.arguments().value(0))
                                : Objects();
    const QString device = devicePathOf(objects, m_address);
    for (auto it = objects.begin(); !device.isEmpty() && it != objects.end(); ++it) {
        const QString path = it.key().path();
        const auto characteristic = it.value().constFind(text(kCharacteristic));
        if (!path.startsWith(device + u'/') || characteristic == it.value().constEnd())
            continue;
        const QVariantMap& properties = *characteristic;
        const QString service =
            qvariant_cast<QDBusObjectPath>(properties.value(QStringLiteral("Service"))).path();
        Route route;
        route.objectPath = path;
        route.gatt = {
            m_address,
            BluetoothUuid::normalized(objects.value(QDBusObjectPath(service))
                                          .value(text(kGattService))
                                          .value(QStringLiteral("UUID"))
                                          .toString()),
            BluetoothUuid::normalized(properties.value(QStringLiteral("UUID")).toString())};
        route.notifyOffered = properties.contains(QStringLiteral("NotifyAcquired"));
        route.writeOffered = properties.contains(QStringLiteral("WriteAcquired")) &&
                             properties.value(QStringLiteral("Flags"))
                                 .toStringList()
                                 .contains(QStringLiteral("write-without-response"));
        m_routes.insert(route.gatt.characteristic, route);
    }
    for (Route& route : m_routes) {
        if (route.writeOffered)
            acquire(route, false);
    }
    if (m_acquiring == 0)
        finishResolving();
}

void BluezDataPath::finishResolving() {
    m_resolution = Resolution::Done;
    for (const auto& done : std::exchange(m_waiting, {}))
        done();
}

void BluezDataPath::acquire(Route& route, bool notify) {
    QDBusMessage call =
        bluezCall(route.objectPath, kCharacteristic, notify ? "AcquireNotify" : "AcquireWrite");
    call << QVariantMap();
    if (notify)
        route.notifyAcquiring = true;
    else
        ++m_acquiring;
    callWithReply(call,
                  [this, characteristic = route.gatt.characteristic,
                   notify](const QDBusMessage& reply) { acquired(characteristic, notify, reply); });
}

void BluezDataPath::acquired(const QString& characteristic, bool notify,
                             const QDBusMessage& reply) {
    Route& route = m_routes[characteristic];
    const int descriptor = descriptorIn(reply);
    if (!notify) {
        adoptWriteSocket(route, descriptor);
        if (--m_acquiring == 0)
            finishResolving();
        return;
    }
    route.notifyAcquiring = false;
    if (descriptor < 0) {
        route.notifyOffered = false;
        if (route.notifyWanted)
            emit notifyRefused(route.gatt);
        return;
    }
    if (!route.notifyWanted) {
        ::close(descriptor); // given up while it was being acquired
        return;
    }
    adoptNotifySocket(route, descriptor);
    emit notifyingChanged(route.gatt, true);
}

void BluezDataPath::adoptWriteSocket(Route& route, int descriptor) {
    // Without the socket, writes fall back to WriteValue.
    route.writeOffered = descriptor >= 0;
    if (descriptor < 0)
        return;
    route.writeSocket = new PacketSocket(descriptor, this);
    route.writer = std::make_shared<PacketSender>(descriptor);
    connect(route.writeSocket, &PacketSocket::hungUp, this, &BluezDataPath::linkLost);
}

void BluezDataPath::adoptNotifySocket(Route& route, int descriptor) {
    auto* reader = new PacketReader(descriptor, this);
    connect(reader, &PacketReader::hungUp, this, &BluezDataPath::linkLost);
    connect(reader, &PacketReader::received, this,
            [this, path = route.gatt](const QByteArray& value) { emit notified(path, value); });
    reader->setSink(route.sink);
    reader->start();
    route.notifySocket = reader;
}

bool BluezDataPath::handlesWrite(const QString& characteristic) const {
    return m_routes.contains(characteristic);
}

OptionalError BluezDataPath::write(const QString& characteristic, const QByteArray& value) {
    const auto found = m_routes.constFind(characteristic);
    if (found == m_routes.constEnd())
        return BluetoothError{0, QStringLiteral("the characteristic is not available")};
    // Pieces are never longer than the smallest MTU carries, so any fits the socket.
    if (found->writer) {
        // A full socket means BlueZ is not taking writes; a closed one hangs up as well.
        if (!found->writer->send(value.constData(), static_cast<std::size_t>(value.size())))
            return BluetoothError{0, QStringLiteral("the characteristic write failed")};
        return std::nullopt;
    }
    callWithReply(writeValueCall(found->objectPath, value),
                  [this, path = found->gatt](const QDBusMessage& reply) {
                      if (reply.type() == QDBusMessage::ErrorMessage)
                          emit writeRefused(path, reply.errorMessage());
                  });
    return std::nullopt;
}

PlatformCentral::ChannelWriter BluezDataPath::channelWriter(const QString& characteristic) const {
    const auto found = m_routes.constFind(characteristic);
    if (found == m_routes.constEnd())
        return {};
    // Called on the notify socket's thread: the sender stays while a frame goes out.
    if (found->writer)
        return [writer = std::weak_ptr(found->writer)](const Bytes& frame) {
            const std::shared_ptr<const PacketSender> held = writer.lock();
            return held && held->send(frame.data(), frame.size());
        };
    // A refused answer is as good as a lost one: the desk polls again.
    return [bus = m_bus, path = found->objectPath](const Bytes& frame) {
        return bus.send(writeValueCall(path, QByteArray(reinterpret_cast<const char*>(frame.data()),
                                                        static_cast<qsizetype>(frame.size()))));
    };
}

void BluezDataPath::setNotifySink(const QString& characteristic, std::shared_ptr<PacketSink> sink) {
    const auto found = m_routes.find(characteristic);
    if (found == m_routes.end())
        return;
    found->sink = std::move(sink);
    if (found->notifySocket)
        found->notifySocket->setSink(found->sink);
}

bool BluezDataPath::setNotifying(const QString& characteristic, bool enabled) {
    const auto found = m_routes.find(characteristic);
    if (found == m_routes.end() || !found->notifyOffered)
        return false;
    found->notifyWanted = enabled;
    if (enabled && !found->notifySocket) {
        if (!found->notifyAcquiring)
            acquire(*found, true);
        return true;
    }
    // Closing the socket is how BlueZ is told to stop.
    if (!enabled)
        PacketSocket::drop(found->notifySocket, this);
    QMetaObject::invokeMethod(
        this, [this, path = found->gatt, enabled] { emit notifyingChanged(path, enabled); },
        Qt::QueuedConnection);
    return true;
}

} // namespace ostrel
