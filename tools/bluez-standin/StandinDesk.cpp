#include "StandinDesk.h"

#include "StandinGatt.h"
#include "core/Scheduler.h"

#include <QDBusObjectPath>

using namespace std::chrono_literals;

namespace ostrel {

using bluez::failure;
using bluez::notSupported;

namespace {

// BlueZ's TemporaryTimeout: how long an unpaired device outlives its last advertisement.
constexpr auto kTemporaryTimeout = 30s;
// A connection attempt to a silent desk gives up before QtDBus's own 25 s call time-out.
constexpr auto kConnectAttempt = 20s;
constexpr char kConnectAborted[] = "le-connection-abort-by-local";

} // namespace

StandinDesk::StandinDesk(VirtualDeskConfig config, const QString& address,
                         const QString& adapterPath, QObject* parent)
    : QObject(parent), m_address(address.toUpper()), m_adapterPath(adapterPath) {
    m_path = m_adapterPath + QStringLiteral("/dev_") + QString(m_address).replace(':', '_');
    adopt(std::make_unique<VirtualDesk>(std::move(config)));
    m_gatt = new StandinGatt(*m_desk, m_path, this);
    connect(m_gatt, &StandinGatt::propertiesChanged, this, &StandinDesk::propertiesChanged);
}

StandinDesk::~StandinDesk() = default;

void StandinDesk::adopt(std::unique_ptr<VirtualDesk> desk) {
    m_desk = std::move(desk);
    if (m_gatt)
        m_gatt->setDesk(*m_desk);
    connect(m_desk.get(), &VirtualDesk::notified, this, [this](const Bytes& value) {
        if (m_connected)
            m_gatt->deliver(value);
    });
    connect(m_desk.get(), &VirtualDesk::linkDropped, this, [this] {
        tearDown();
        reachChanged(m_desk->isAdvertising());
    });
    connect(m_desk.get(), &VirtualDesk::advertisingChanged, this, &StandinDesk::reachChanged);
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
                 {QStringLiteral("UUIDs"), QStringList{bluez::fullUuid(m_desk->serviceUuid())}},
                 {QStringLiteral("ServicesResolved"), m_servicesResolved},
             }}};
}

ManagedObjectList StandinDesk::objects() const {
    ManagedObjectList objects;
    if (!m_exported)
        return objects;
    objects.insert(QDBusObjectPath(m_path), deviceInterfaces());
    if (m_connected)
        objects.insert(m_gatt->objects());
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
    return m_gatt->call(message);
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
    m_gatt->linkStarted();
    deviceChanged({{QStringLiteral("Connected"), true}});
    const ManagedObjectList gatt = m_gatt->objects();
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

void StandinDesk::tearDown() {
    if (!m_connected)
        return;
    m_gatt->linkEnded();
    m_connected = false;
    m_servicesResolved = false;
    deviceChanged({{QStringLiteral("ServicesResolved"), false}});
    deviceChanged({{QStringLiteral("Connected"), false}});
    // Children go before their parents, as BlueZ removes them.
    const ManagedObjectList gatt = m_gatt->objects();
    for (auto it = gatt.end(); it != gatt.begin();) {
        --it;
        emit interfacesRemoved(it.key().path(), it.value().keys());
    }
}

} // namespace ostrel
