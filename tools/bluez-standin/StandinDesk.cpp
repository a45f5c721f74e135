#include "StandinDesk.h"

#include "core/PacketSocket.h"
#include "core/Scheduler.h"

#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <unistd.h>

using namespace std::chrono_literals;

namespace ostrel {

namespace {

constexpr char kClientConfigurationUuid[] = "2902";
// The desk's keypad poll: frame type at offset 2 (after head and length).
constexpr std::size_t kFrameTypeOffset = 2;
constexpr std::uint8_t kPollFrameType = 0x11;
// BlueZ's default ATT MTU for a fresh LE link.
constexpr quint16 kDefaultMtu = 23;
constexpr char kNotifyAcquired[] = "NotifyAcquired";
constexpr char kWriteAcquired[] = "WriteAcquired";
// BlueZ's TemporaryTimeout: how long an unpaired device outlives its last advertisement.
constexpr auto kTemporaryTimeout = 30s;
// A connection attempt to a silent desk gives up before QtDBus's own 25 s call time-out.
constexpr auto kConnectAttempt = 20s;
constexpr char kConnectAborted[] = "le-connection-abort-by-local";

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

QDBusMessage failure(const QDBusMessage& message, const char* name, const QString& text) {
    return message.createErrorReply(QString::fromLatin1(name), text);
}

QDBusMessage notSupported(const QDBusMessage& message) {
    return failure(message, bluez::kErrorNotSupported, QStringLiteral("Not supported"));
}

} // namespace

StandinDesk::StandinDesk(VirtualDeskConfig config, const QString& address,
                         const QString& adapterPath, QObject* parent)
    : QObject(parent), m_address(address.toUpper()), m_adapterPath(adapterPath),
      m_mtu(kDefaultMtu) {
    m_clock.start();
    m_path = m_adapterPath + QStringLiteral("/dev_") + QString(m_address).replace(':', '_');
    adopt(std::make_unique<VirtualDesk>(std::move(config)));
    buildGatt();
}

StandinDesk::~StandinDesk() = default;

void StandinDesk::adopt(std::unique_ptr<VirtualDesk> desk) {
    m_desk = std::move(desk);
    connect(m_desk.get(), &VirtualDesk::notified, this, &StandinDesk::deliver);
    connect(m_desk.get(), &VirtualDesk::linkDropped, this, [this] {
        tearDown();
        reachChanged(m_desk->isAdvertising());
    });
    connect(m_desk.get(), &VirtualDesk::advertisingChanged, this, &StandinDesk::reachChanged);
}

void StandinDesk::buildGatt() {
    // Handles as BlueZ numbers them: service, then declaration/value pairs, descriptors after.
    m_serviceUuid = bluez::fullUuid(m_desk->serviceUuid());
    m_servicePath = objectPath(m_path, "service", 0x0c);
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

bool StandinDesk::owns(const QString& objectPath) const {
    return objectPath == m_path || objectPath.startsWith(m_path + '/');
}

InterfaceList StandinDesk::deviceInterfaces() const {
    const int rssi = m_desk->config().rssi + m_sightings % 3 - 1;
    return {{QString::fromLatin1(bluez::kDeviceInterface),
             QVariantMap{
                 {QStringLiteral("Address"), m_address},
                 {QStringLiteral("AddressType"), QStringLiteral("random")},
                 {QStringLiteral("Name"), name()},
                 {QStringLiteral("Alias"), name()},
                 {QStringLiteral("Adapter"), QVariant::fromValue(QDBusObjectPath(m_adapterPath))},
                 {QStringLiteral("Paired"), false},
                 {QStringLiteral("Bonded"), false},
                 {QStringLiteral("Trusted"), false},
                 {QStringLiteral("Blocked"), false},
                 {QStringLiteral("LegacyPairing"), false},
                 {QStringLiteral("RSSI"), QVariant::fromValue(static_cast<qint16>(rssi))},
                 {QStringLiteral("Connected"), m_connected},
                 {QStringLiteral("UUIDs"), QStringList{m_serviceUuid}},
                 {QStringLiteral("ServicesResolved"), m_servicesResolved},
             }}};
}

ManagedObjectList StandinDesk::gattObjects() const {
    ManagedObjectList objects;
    objects.insert(
        QDBusObjectPath(m_servicePath),
        {{QString::fromLatin1(bluez::kServiceInterface),
          QVariantMap{{QStringLiteral("UUID"), m_serviceUuid},
                      {QStringLiteral("Device"), QVariant::fromValue(QDBusObjectPath(m_path))},
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

ManagedObjectList StandinDesk::objects() const {
    ManagedObjectList objects;
    if (!m_exported)
        return objects;
    objects.insert(QDBusObjectPath(m_path), deviceInterfaces());
    if (m_connected)
        objects.insert(gattObjects());
    return objects;
}

void StandinDesk::sight() {
    ++m_sightings;
    if (!m_exported) {
        m_exported = true;
        emit interfacesAdded(m_path, deviceInterfaces());
        return;
    }
    deviceChanged(
        {{QStringLiteral("RSSI"), deviceInterfaces().first().value(QStringLiteral("RSSI"))}});
}

void StandinDesk::reachChanged(bool advertising) {
    m_expiry.cancel();
    if (advertising) {
        finishConnect(true);
        return;
    }
    // A linked desk that leaves reach also drops its link, which comes back here.
    if (!m_connected)
        m_expiry = Scheduler::instance().after(kTemporaryTimeout, this, [this] { forget(); });
}

void StandinDesk::dropLink() {
    finishConnect(false);
    tearDown();
}

void StandinDesk::forget() {
    m_expiry.cancel();
    if (!m_exported)
        return;
    dropLink();
    m_exported = false;
    emit interfacesRemoved(m_path, {QString::fromLatin1(bluez::kDeviceInterface)});
}

void StandinDesk::setPollPeriod(std::chrono::milliseconds period) {
    VirtualDeskConfig config = m_desk->config();
    config.pollPeriod = period;
    config.startHeight = m_desk->heightTenths();
    const bool subscribed = m_desk->isSubscribed();
    m_desk->disconnect(this);
    adopt(std::make_unique<VirtualDesk>(std::move(config)));
    m_desk->setSubscribed(subscribed);
}

void StandinDesk::deviceChanged(const QVariantMap& changed) {
    emit propertiesChanged(m_path, QString::fromLatin1(bluez::kDeviceInterface), changed);
}

QDBusMessage StandinDesk::call(const QDBusMessage& message) {
    const QString interface = message.interface();
    if (interface == QLatin1String(bluez::kDeviceInterface)) {
        if (message.member() == QLatin1String("Connect"))
            return connectLink(message);
        if (message.member() != QLatin1String("Disconnect"))
            return notSupported(message);
        dropLink();
        return message.createReply();
    }
    // The GATT objects exist only while linked.
    if (!m_connected)
        return failure(message, bluez::kErrorDoesNotExist, QStringLiteral("Does Not Exist"));
    if (interface == QLatin1String(bluez::kCharacteristicInterface))
        if (const Characteristic* characteristic = characteristicAt(message.path()))
            return characteristicCall(*characteristic, message);
    if (interface == QLatin1String(bluez::kDescriptorInterface))
        return descriptorCall(message);
    return notSupported(message);
}

QDBusMessage StandinDesk::connectLink(const QDBusMessage& message) {
    if (m_pendingConnect)
        return failure(message, bluez::kErrorInProgress, QStringLiteral("In Progress"));
    if (!m_connected && !m_desk->isAdvertising()) {
        message.setDelayedReply(true);
        m_pendingConnect = message;
        m_connectTimeout =
            Scheduler::instance().after(kConnectAttempt, this, [this] { finishConnect(false); });
        return {};
    }
    establishLink();
    return message.createReply();
}

void StandinDesk::finishConnect(bool linked) {
    if (!m_pendingConnect)
        return;
    const QDBusMessage call = *std::exchange(m_pendingConnect, std::nullopt);
    m_connectTimeout.cancel();
    if (linked)
        establishLink();
    emit lateReply(linked
                       ? call.createReply()
                       : failure(call, bluez::kErrorFailed, QString::fromLatin1(kConnectAborted)));
}

void StandinDesk::establishLink() {
    if (m_connected)
        return;
    m_connected = true;
    m_pollRoundTrips.clear();
    m_pollSentAt.reset();
    deviceChanged({{QStringLiteral("Connected"), true}});
    const ManagedObjectList gatt = gattObjects();
    for (auto it = gatt.begin(); it != gatt.end(); ++it)
        emit interfacesAdded(it.key().path(), it.value());
    // BlueZ answers Connect first and resolves services a moment later.
    Scheduler::instance().after(0ms, this, [this] {
        if (!m_connected)
            return;
        m_servicesResolved = true;
        deviceChanged({{QStringLiteral("ServicesResolved"), true}});
    });
}

const StandinDesk::Characteristic* StandinDesk::characteristicAt(const QString& path) const {
    for (const Characteristic& c : m_characteristics) {
        if (c.path == path)
            return &c;
    }
    return nullptr;
}

const StandinDesk::Characteristic* StandinDesk::notifyCharacteristic() const {
    return &m_characteristics.first();
}

const StandinDesk::Characteristic* StandinDesk::writeCharacteristic() const {
    return &m_characteristics.last(); // the same one when a single one carries both directions
}

QDBusMessage StandinDesk::characteristicCall(const Characteristic& characteristic,
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

QDBusMessage StandinDesk::writeValue(const Characteristic& characteristic,
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

QVariantMap StandinDesk::acquireProperties(const Characteristic& characteristic) const {
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

QDBusMessage StandinDesk::acquire(const Characteristic& characteristic,
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
        connect(m_writeSocket, &PacketSocket::received, this, &StandinDesk::hostWrote);
        connect(m_writeSocket, &PacketSocket::hungUp, this, [this] { releaseAcquired(false); });
        m_writeSocket->setReading(!m_writeError);
    }
    emit propertiesChanged(
        characteristic.path, QString::fromLatin1(bluez::kCharacteristicInterface),
        {{QString::fromLatin1(notify ? kNotifyAcquired : kWriteAcquired), true}});
    return reply;
}

QDBusMessage StandinDesk::handOutSocket(const QDBusMessage& message, QPointer<PacketSocket>& kept) {
    const auto [ours, theirs] = PacketSocket::createPair();
    if (ours < 0)
        return failure(message, bluez::kErrorFailed, QStringLiteral("Operation failed"));
    kept = new PacketSocket(ours, this);
    // The descriptor object holds a duplicate, which travels with the reply.
    const QDBusUnixFileDescriptor handed(theirs);
    ::close(theirs);
    return message.createReply({QVariant::fromValue(handed), QVariant::fromValue(m_mtu)});
}

void StandinDesk::releaseAcquired(bool notify) {
    // The host closed its end.
    PacketSocket::drop(notify ? m_notifySocket : m_writeSocket, this);
    if (notify)
        setNotifying(false);
    const Characteristic* characteristic = notify ? notifyCharacteristic() : writeCharacteristic();
    emit propertiesChanged(
        characteristic->path, QString::fromLatin1(bluez::kCharacteristicInterface),
        {{QString::fromLatin1(notify ? kNotifyAcquired : kWriteAcquired), false}});
}

void StandinDesk::hangUpSockets() {
    if (m_notifySocket)
        releaseAcquired(true);
    if (m_writeSocket)
        releaseAcquired(false);
}

void StandinDesk::setWriteError(bool failing) {
    m_writeError = failing;
    // A stack that takes no writes: the socket fills up and the host's sends fail.
    if (m_writeSocket)
        m_writeSocket->setReading(!failing);
}

void StandinDesk::hostWrote(const QByteArray& value) {
    if (m_pollSentAt) {
        m_pollRoundTrips.append((m_clock.nsecsElapsed() - *m_pollSentAt) / 1000);
        m_pollSentAt.reset();
    }
    m_desk->writeFromHost(toBytes(value));
}

QDBusMessage StandinDesk::descriptorCall(const QDBusMessage& message) {
    if (message.member() != QLatin1String("ReadValue"))
        return failure(message, bluez::kErrorNotPermitted, QStringLiteral("Write not permitted"));
    const QByteArray configuration =
        m_notifying ? QByteArray::fromHex("0100") : QByteArray::fromHex("0000");
    return message.createReply(QVariant(configuration));
}

void StandinDesk::setNotifying(bool notifying) {
    if (notifying == m_notifying)
        return;
    m_notifying = notifying;
    m_desk->setSubscribed(notifying);
    emit propertiesChanged(notifyCharacteristic()->path,
                           QString::fromLatin1(bluez::kCharacteristicInterface),
                           {{QStringLiteral("Notifying"), notifying}});
}

void StandinDesk::deliver(const Bytes& value) {
    if (!m_connected || !m_notifying)
        return;
    m_value = toByteArray(value);
    if (value.size() > kFrameTypeOffset && value[kFrameTypeOffset] == kPollFrameType)
        m_pollSentAt = m_clock.nsecsElapsed();
    // An acquired notification travels over the socket alone, as bluetoothd sends it.
    if (m_notifySocket) {
        m_notifySocket->send(m_value);
        return;
    }
    emit propertiesChanged(notifyCharacteristic()->path,
                           QString::fromLatin1(bluez::kCharacteristicInterface),
                           {{QStringLiteral("Value"), m_value}});
}

void StandinDesk::tearDown() {
    if (!m_connected)
        return;
    // The link's end hangs up the acquired sockets.
    PacketSocket::drop(m_notifySocket, this);
    PacketSocket::drop(m_writeSocket, this);
    m_notifying = false;
    m_desk->setSubscribed(false);
    m_connected = false;
    m_servicesResolved = false;
    deviceChanged({{QStringLiteral("ServicesResolved"), false}});
    deviceChanged({{QStringLiteral("Connected"), false}});
    // Children go before their parents, as BlueZ removes them.
    const ManagedObjectList gatt = gattObjects();
    for (auto it = gatt.end(); it != gatt.begin();) {
        --it;
        emit interfacesRemoved(it.key().path(), it.value().keys());
    }
}

} // namespace ostrel
