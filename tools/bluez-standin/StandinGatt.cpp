#include "StandinGatt.h"

#include "core/PacketSocket.h"
#include "sim/VirtualDesk.h"

#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <unistd.h>

namespace ostrel {

using bluez::failure;
using bluez::notSupported;

namespace {

constexpr char kClientConfigurationUuid[] = "2902";
// The desk's keypad poll: frame type at offset 2 (after head and length).
constexpr std::size_t kFrameTypeOffset = 2;
constexpr std::uint8_t kPollFrameType = 0x11;
// BlueZ's default ATT MTU for a fresh LE link.
constexpr quint16 kDefaultMtu = 23;
constexpr char kNotifyAcquired[] = "NotifyAcquired";
constexpr char kWriteAcquired[] = "WriteAcquired";

QByteArray toByteArray(const Bytes& bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()),
                      static_cast<qsizetype>(bytes.size()));
}

Bytes toBytes(const QByteArray& data) {
    return Bytes(data.begin(), data.end());
}

QString objectPath(const QString& parent, const char* kind, int handle) {
    return QStringLiteral("%1/%2%3")
        .arg(parent, QLatin1String(kind))
        .arg(handle, 4, 16, QLatin1Char('0'));
}

} // namespace

StandinGatt::StandinGatt(VirtualDesk& desk, const QString& devicePath, QObject* parent)
    : QObject(parent), m_desk(&desk), m_devicePath(devicePath), m_mtu(kDefaultMtu) {
    m_clock.start();
    build(devicePath);
}

StandinGatt::~StandinGatt() = default;

QDBusMessage StandinGatt::call(const QDBusMessage& message) {
    if (message.interface() == QLatin1String(bluez::kCharacteristicInterface))
        if (const Characteristic* characteristic = characteristicAt(message.path()))
            return characteristicCall(*characteristic, message);
    if (message.interface() == QLatin1String(bluez::kDescriptorInterface))
        return descriptorCall(message);
    return notSupported(message);
}

void StandinGatt::linkStarted() {
    m_pollRoundTrips.clear();
    m_pollSentAt.reset();
}

void StandinGatt::linkEnded() {
    // The link's end hangs up the acquired sockets.
    PacketSocket::drop(m_notifySocket, this);
    PacketSocket::drop(m_writeSocket, this);
    m_notifying = false;
    m_desk->setSubscribed(false);
}

void StandinGatt::characteristicChanged(const Characteristic& characteristic,
                                        const QVariantMap& changed) {
    emit propertiesChanged(characteristic.path,
                           QString::fromLatin1(bluez::kCharacteristicInterface), changed);
}

void StandinGatt::build(const QString& devicePath) {
    // Handles as BlueZ numbers them: service, then declaration/value pairs, descriptors after.
    m_serviceUuid = bluez::fullUuid(m_desk->serviceUuid());
    m_servicePath = objectPath(devicePath, "service", 0x0c);
    Characteristic notify;
    notify.path = objectPath(m_servicePath, "char", 0x0d);
    notify.uuid = bluez::fullUuid(m_desk->notifyUuid());
    notify.notifies = true;
    notify.descriptorPath = objectPath(notify.path, "desc", 0x0f);
    if (m_desk->notifyUuid() == m_desk->writeUuid()) {
        // One characteristic carries both directions.
        notify.writable = true;
        notify.flags = QStringList{QStringLiteral("read"), QStringLiteral("write-without-response"),
                                   QStringLiteral("write"), QStringLiteral("notify")};
        m_characteristics = {notify};
        return;
    }
    notify.flags = QStringList{QStringLiteral("notify")};
    Characteristic write;
    write.path = objectPath(m_servicePath, "char", 0x10);
    write.uuid = bluez::fullUuid(m_desk->writeUuid());
    write.writable = true;
    write.flags = QStringList{QStringLiteral("write-without-response")};
    m_characteristics = {notify, write};
}

ManagedObjectList StandinGatt::objects() const {
    ManagedObjectList objects;
    objects.insert(QDBusObjectPath(m_servicePath),
                   {{QString::fromLatin1(bluez::kServiceInterface),
                     QVariantMap{{QStringLiteral("UUID"), m_serviceUuid},
                                 {QStringLiteral("Device"),
                                  QVariant::fromValue(QDBusObjectPath(m_devicePath))},
                                 {QStringLiteral("Primary"), true}}}});
    for (const Characteristic& c : m_characteristics) {
        QVariantMap properties{
            {QStringLiteral("UUID"), c.uuid},
            {QStringLiteral("Service"), QVariant::fromValue(QDBusObjectPath(m_servicePath))},
            {QStringLiteral("Value"), c.notifies ? m_value : QByteArray()},
            {QStringLiteral("Notifying"), c.notifies && m_notifying},
            {QStringLiteral("Flags"), c.flags},
            {QStringLiteral("MTU"), QVariant::fromValue(m_mtu)}};
        properties.insert(acquireProperties(c));
        objects.insert(QDBusObjectPath(c.path),
                       {{QString::fromLatin1(bluez::kCharacteristicInterface), properties}});
        if (!c.descriptorPath.isEmpty())
            objects.insert(
                QDBusObjectPath(c.descriptorPath),
                {{QString::fromLatin1(bluez::kDescriptorInterface),
                  QVariantMap{{QStringLiteral("UUID"), bluez::fullUuid(kClientConfigurationUuid)},
                              {QStringLiteral("Characteristic"),
                               QVariant::fromValue(QDBusObjectPath(c.path))},
                              {QStringLiteral("Value"), QByteArray()}}}});
    }
    return objects;
}

const StandinGatt::Characteristic* StandinGatt::characteristicAt(const QString& path) const {
    for (const Characteristic& c : m_characteristics) {
        if (c.path == path)
            return &c;
    }
    return nullptr;
}

const StandinGatt::Characteristic& StandinGatt::notifyCharacteristic() const {
    return m_characteristics.first();
}

const StandinGatt::Characteristic& StandinGatt::writeCharacteristic() const {
    return m_characteristics.last(); // the same one when a single one carries both directions
}

QDBusMessage StandinGatt::characteristicCall(const Characteristic& characteristic,
                                             const QDBusMessage& message) {
    const QString member = message.member();
    if (member == QLatin1String("ReadValue"))
        return message.createReply(QVariant(characteristic.notifies ? m_value : QByteArray()));
    if (member == QLatin1String("WriteValue"))
        return writeValue(characteristic, message);
    if (member.startsWith(QLatin1String("Acquire")))
        return acquire(characteristic, message);
    if (characteristic.notifies &&
        (member == QLatin1String("StartNotify") || member == QLatin1String("StopNotify"))) {
        if (m_notifySocket)
            return failure(message, bluez::kErrorNotPermitted, QStringLiteral("Notify acquired"));
        setNotifying(member == QLatin1String("StartNotify"));
        return message.createReply();
    }
    return notSupported(message);
}

QDBusMessage StandinGatt::writeValue(const Characteristic& characteristic,
                                     const QDBusMessage& message) {
    if (!characteristic.writable)
        return failure(message, bluez::kErrorNotPermitted, QStringLiteral("Write not permitted"));
    if (m_writeSocket)
        return failure(message, bluez::kErrorNotPermitted, QStringLiteral("Write acquired"));
    if (m_writeError)
        return failure(message, bluez::kErrorFailed, QStringLiteral("Operation failed"));
    const QList<QVariant> arguments = message.arguments();
    if (arguments.isEmpty() || arguments.first().userType() != QMetaType::QByteArray)
        return failure(message, bluez::kErrorInvalidArguments,
                       QStringLiteral("Invalid arguments in method call"));
    hostWrote(arguments.first().toByteArray());
    return message.createReply();
}

QVariantMap StandinGatt::acquireProperties(const Characteristic& characteristic) const {
    // bluetoothd shows these only where it can hand out a socket.
    QVariantMap properties;
    if (!m_acquireOffered)
        return properties;
    if (characteristic.notifies)
        properties.insert(QString::fromLatin1(kNotifyAcquired), !m_notifySocket.isNull());
    if (characteristic.writable)
        properties.insert(QString::fromLatin1(kWriteAcquired), !m_writeSocket.isNull());
    return properties;
}

QDBusMessage StandinGatt::acquire(const Characteristic& characteristic,
                                  const QDBusMessage& message) {
    const bool notify = message.member() == QLatin1String("AcquireNotify");
    const bool offered = notify ? characteristic.notifies : characteristic.writable;
    if (!m_acquireOffered || !offered ||
        (!notify && message.member() != QLatin1String("AcquireWrite")))
        return notSupported(message);
    if (notify && m_notifying)
        return failure(message, bluez::kErrorInProgress, QStringLiteral("In Progress"));
    if (!notify && m_writeSocket)
        return failure(message, bluez::kErrorNotPermitted, QStringLiteral("Write acquired"));
    const QDBusMessage reply = handOutSocket(message, notify ? m_notifySocket : m_writeSocket);
    if (reply.type() == QDBusMessage::ErrorMessage)
        return reply;
    if (notify) {
        connect(m_notifySocket, &PacketSocket::hungUp, this, [this] { releaseAcquired(true); });
        setNotifying(true);
    } else {
        connect(m_writeSocket, &PacketSocket::received, this, &StandinGatt::hostWrote);
        connect(m_writeSocket, &PacketSocket::hungUp, this, [this] { releaseAcquired(false); });
        m_writeSocket->setReading(!m_writeError);
    }
    characteristicChanged(characteristic,
                          {{QString::fromLatin1(notify ? kNotifyAcquired : kWriteAcquired), true}});
    return reply;
}

QDBusMessage StandinGatt::handOutSocket(const QDBusMessage& message, QPointer<PacketSocket>& kept) {
    const auto [ours, theirs] = PacketSocket::createPair();
    if (ours < 0)
        return failure(message, bluez::kErrorFailed, QStringLiteral("Operation failed"));
    kept = new PacketSocket(ours, this);
    // The descriptor object holds a duplicate, which travels with the reply.
    const QDBusUnixFileDescriptor handed(theirs);
    ::close(theirs);
    return message.createReply({QVariant::fromValue(handed), QVariant::fromValue(m_mtu)});
}

void StandinGatt::releaseAcquired(bool notify) {
    // The host closed its end.
    PacketSocket::drop(notify ? m_notifySocket : m_writeSocket, this);
    if (notify)
        setNotifying(false);
    characteristicChanged(
        notify ? notifyCharacteristic() : writeCharacteristic(),
        {{QString::fromLatin1(notify ? kNotifyAcquired : kWriteAcquired), false}});
}

void StandinGatt::hangUpSockets() {
    if (m_notifySocket)
        releaseAcquired(true);
    if (m_writeSocket)
        releaseAcquired(false);
}

void StandinGatt::setWriteError(bool failing) {
    m_writeError = failing;
    // A stack that takes no writes: the socket fills up and the host's sends fail.
    if (m_writeSocket)
        m_writeSocket->setReading(!failing);
}

void StandinGatt::hostWrote(const QByteArray& value) {
    if (m_pollSentAt) {
        m_pollRoundTrips.append((m_clock.nsecsElapsed() - *m_pollSentAt) / 1000);
        m_pollSentAt.reset();
    }
    m_desk->writeFromHost(toBytes(value));
}

QDBusMessage StandinGatt::descriptorCall(const QDBusMessage& message) {
    if (message.member() != QLatin1String("ReadValue"))
        return failure(message, bluez::kErrorNotPermitted, QStringLiteral("Write not permitted"));
    const QByteArray configuration =
        m_notifying ? QByteArray::fromHex("0100") : QByteArray::fromHex("0000");
    return message.createReply(QVariant(configuration));
}

void StandinGatt::setNotifying(bool notifying) {
    if (notifying == m_notifying)
        return;
    m_notifying = notifying;
    m_desk->setSubscribed(notifying);
    characteristicChanged(notifyCharacteristic(), {{QStringLiteral("Notifying"), notifying}});
}

void StandinGatt::deliver(const Bytes& value) {
    if (!m_notifying)
        return;
    m_value = toByteArray(value);
    if (value.size() > kFrameTypeOffset && value[kFrameTypeOffset] == kPollFrameType)
        m_pollSentAt = m_clock.nsecsElapsed();
    // An acquired notification travels over the socket alone, as bluetoothd sends it.
    if (m_notifySocket) {
        m_notifySocket->send(m_value);
        return;
    }
    characteristicChanged(notifyCharacteristic(), {{QStringLiteral("Value"), m_value}});
}

} // namespace ostrel
