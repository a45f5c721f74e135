#include "VirtualCentral.h"

#include "VirtualDesk.h"
#include "core/Scheduler.h"
#include "transport/BluetoothUuid.h"

#include <QUuid>

namespace ostrel {

namespace {

constexpr int kRead = 0x02;
constexpr int kWriteWithoutResponse = 0x04;
constexpr int kWrite = 0x08;
constexpr int kNotify = 0x10;
const QString kClientConfiguration = QStringLiteral("2902");

BluetoothError radioError(const char* text) {
    return BluetoothError{0, QString::fromLatin1(text)};
}

} // namespace

VirtualCentral::VirtualCentral(QObject* parent) : PlatformCentral(parent) {}

VirtualCentral::~VirtualCentral() {
    m_advertising.cancel();
}

void VirtualCentral::addDesk(VirtualDesk* desk) {
    // Stable per name and position, so a demo desk keeps its identity across runs.
    static const QUuid kNamespace =
        QUuid::fromString(QStringLiteral("6f1c5f0e-3a57-4b52-9d0e-8a1f00c0ffee"));
    const QString identifier =
        QUuid::createUuidV5(kNamespace, desk->name() + u'#' + QString::number(m_links.size()))
            .toString(QUuid::WithoutBraces)
            .toUpper();
    m_links[identifier].desk = desk;
    connect(desk, &VirtualDesk::notified, this,
            [this, identifier](const Bytes& value) { deskNotified(identifier, value); });
    connect(desk, &VirtualDesk::linkDropped, this, [this, identifier] {
        endLink(identifier, radioError("The connection has timed out unexpectedly."));
    });
    connect(desk, &VirtualDesk::advertisingChanged, this, [this, identifier](bool advertising) {
        if (advertising)
            tryConnect(identifier);
    });
}

QString VirtualCentral::identifierOf(const VirtualDesk* desk) const {
    for (const auto& [identifier, link] : m_links) {
        if (link.desk == desk)
            return identifier;
    }
    return {};
}

VirtualCentral::Link* VirtualCentral::linkFor(const QString& identifier) {
    const auto found = m_links.find(identifier);
    return found == m_links.end() || !found->second.desk ? nullptr : &found->second;
}

const VirtualCentral::Link* VirtualCentral::linkFor(const QString& identifier) const {
    const auto found = m_links.find(identifier);
    return found == m_links.end() || !found->second.desk ? nullptr : &found->second;
}

const VirtualCentral::Link* VirtualCentral::connectedLink(const QString& identifier) const {
    const Link* link = linkFor(identifier);
    return link && link->state == PeripheralConnected ? link : nullptr;
}

void VirtualCentral::later(std::function<void(PlatformCentralDelegate&)> report) {
    Scheduler::instance().after(m_latency, this, [this, report = std::move(report)] {
        if (delegate())
            report(*delegate());
    });
}

// ---- Radio and scanning ----

int VirtualCentral::state() const {
    return m_powered ? StatePoweredOn : StatePoweredOff;
}

void VirtualCentral::setPowered(bool powered) {
    if (powered == m_powered)
        return;
    m_powered = powered;
    if (!powered) {
        for (auto& [identifier, link] : m_links) {
            if (link.state == PeripheralConnected)
                endLink(identifier, radioError("Bluetooth is powered off."));
        }
    }
    if (delegate())
        delegate()->centralDidUpdateState(state());
    updateAdvertising();
    if (powered) {
        for (const auto& [identifier, link] : m_links)
            tryConnect(identifier);
    }
}

void VirtualCentral::scanForPeripherals(const QStringList& services, const QVariantMap&) {
    m_scanRequested = true;
    m_scanServices.clear();
    for (const QString& service : services)
        m_scanServices.append(BluetoothUuid::normalized(service));
    updateAdvertising();
}

void VirtualCentral::stopScan() {
    m_scanRequested = false;
    updateAdvertising();
}

void VirtualCentral::updateAdvertising() {
    const bool wanted = m_scanRequested && m_powered;
    if (wanted && m_advertising.isNull()) {
        m_advertising = Scheduler::instance().every(m_interval, this, [this] { advertise(); });
    } else if (!wanted && !m_advertising.isNull()) {
        m_advertising.cancel();
        m_advertising = {};
    }
}

void VirtualCentral::advertise() {
    // Sightings may lead to connects and new desks; walk a snapshot of the identifiers.
    QStringList identifiers;
    for (const auto& [identifier, link] : m_links)
        identifiers.append(identifier);
    for (const QString& identifier : identifiers) {
        const Link* link = linkFor(identifier);
        // A connected desk stops advertising, as BLE peripherals do.
        if (!link || !link->desk->isAdvertising() || link->state == PeripheralConnected)
            continue;
        const QString service = BluetoothUuid::normalized(link->desk->serviceUuid());
        if (!m_scanServices.isEmpty() && !m_scanServices.contains(service))
            continue;
        if (!m_scanRequested || !delegate())
            return;
        delegate()->centralDidDiscoverPeripheral(
            identifier,
            QVariantMap{{QString::fromLatin1(kLocalNameKey), link->desk->name()},
                        {QString::fromLatin1(kServiceUUIDsKey), QStringList{service}}},
            link->desk->config().rssi);
    }
}

void VirtualCentral::injectSighting(const QString& identifier, const QVariantMap& advertisementData,
                                    int rssi) {
    if (m_scanRequested && m_powered && delegate())
        delegate()->centralDidDiscoverPeripheral(identifier, advertisementData, rssi);
}

QStringList VirtualCentral::retrieveConnectedPeripherals(const QStringList& services) const {
    QStringList connected;
    for (const auto& [identifier, link] : m_links) {
        if (!connectedLink(identifier))
            continue;
        const bool wanted = services.isEmpty() ||
                            std::any_of(services.begin(), services.end(), [&](const QString& s) {
                                return BluetoothUuid::same(s, link.desk->serviceUuid());
                            });
        if (wanted)
            connected.append(identifier);
    }
    return connected;
}

bool VirtualCentral::isKnownPeripheral(const QString& identifier) const {
    return linkFor(identifier) != nullptr;
}

QString VirtualCentral::peripheralName(const QString& identifier) const {
    const Link* link = linkFor(identifier);
    return link ? link->desk->name() : QString();
}

int VirtualCentral::peripheralState(const QString& identifier) const {
    const Link* link = linkFor(identifier);
    return link ? link->state : PeripheralDisconnected;
}

// ---- Links ----

void VirtualCentral::setConnectFailure(const VirtualDesk* desk, const QString& text) {
    if (Link* link = linkFor(identifierOf(desk)))
        link->connectFailure = text;
}

void VirtualCentral::setWriteRefusal(const VirtualDesk* desk, const QString& text) {
    if (Link* link = linkFor(identifierOf(desk)))
        link->writeRefusal = text;
}

void VirtualCentral::connectPeripheral(const QString& identifier, const QVariantMap&) {
    Link* link = linkFor(identifier);
    if (!link || link->state == PeripheralConnected)
        return;
    link->state = PeripheralConnecting;
    tryConnect(identifier);
}

// A pending connect completes once the desk can be reached, however long that takes.
void VirtualCentral::tryConnect(const QString& identifier) {
    const Link* link = linkFor(identifier);
    if (!link || link->state != PeripheralConnecting || !m_powered || !link->desk->isAdvertising())
        return;
    Scheduler::instance().after(m_latency, this, [this, identifier] {
        Link* pending = linkFor(identifier);
        if (!pending || pending->state != PeripheralConnecting || !m_powered ||
            !pending->desk->isAdvertising())
            return;
        if (!pending->connectFailure.isEmpty()) {
            pending->state = PeripheralDisconnected;
            if (delegate())
                delegate()->centralDidFailToConnectPeripheral(
                    identifier, BluetoothError{0, pending->connectFailure});
            return;
        }
        pending->state = PeripheralConnected;
        if (delegate())
            delegate()->centralDidConnectPeripheral(identifier);
    });
}

void VirtualCentral::cancelPeripheralConnection(const QString& identifier) {
    Link* link = linkFor(identifier);
    if (!link)
        return;
    if (link->state != PeripheralConnected) {
        link->state = PeripheralDisconnected;
        return;
    }
    unlink(*link);
    later([identifier](PlatformCentralDelegate& d) {
        d.centralDidDisconnectPeripheral(identifier, std::nullopt);
    });
}

void VirtualCentral::endLink(const QString& identifier, const OptionalError& error) {
    Link* link = linkFor(identifier);
    if (!link || link->state != PeripheralConnected)
        return;
    unlink(*link);
    if (delegate())
        delegate()->centralDidDisconnectPeripheral(identifier, error);
}

void VirtualCentral::unlink(Link& link) {
    link.desk->setSubscribed(false);
    link.state = PeripheralDisconnected;
    link.notifying = false;
    link.sink = nullptr;
}

// ---- GATT ----

void VirtualCentral::discoverServices(const QString& identifier, const QStringList&) {
    later([this, identifier](PlatformCentralDelegate& d) {
        if (connectedLink(identifier))
            d.peripheralDidDiscoverServices(identifier, std::nullopt);
    });
}

QStringList VirtualCentral::services(const QString& identifier) const {
    const Link* link = connectedLink(identifier);
    return link ? QStringList{BluetoothUuid::normalized(link->desk->serviceUuid())} : QStringList{};
}

void VirtualCentral::discoverCharacteristics(const QString& identifier, const QString& service,
                                             const QStringList&) {
    later([this, identifier, service](PlatformCentralDelegate& d) {
        if (connectedLink(identifier))
            d.peripheralDidDiscoverCharacteristics(identifier, service, std::nullopt);
    });
}

QList<PlatformCharacteristicInfo> VirtualCentral::characteristics(const QString& identifier,
                                                                  const QString& service) const {
    const Link* link = connectedLink(identifier);
    if (!link || !BluetoothUuid::same(service, link->desk->serviceUuid()))
        return {};
    const QString notify = BluetoothUuid::normalized(link->desk->notifyUuid());
    const QString write = BluetoothUuid::normalized(link->desk->writeUuid());
    if (notify == write)
        return {{notify, kRead | kWriteWithoutResponse | kWrite | kNotify}};
    return {{notify, kNotify}, {write, kWriteWithoutResponse | kWrite}};
}

bool VirtualCentral::isNotifyCharacteristic(const Link& link, const GattPath& path) const {
    return BluetoothUuid::same(path.service, link.desk->serviceUuid()) &&
           BluetoothUuid::same(path.characteristic, link.desk->notifyUuid());
}

void VirtualCentral::discoverDescriptors(const GattPath& path) {
    later([this, path](PlatformCentralDelegate& d) {
        if (connectedLink(path.peripheral))
            d.peripheralDidDiscoverDescriptors(path, std::nullopt);
    });
}

QStringList VirtualCentral::descriptors(const GattPath& path) const {
    const Link* link = connectedLink(path.peripheral);
    return link && isNotifyCharacteristic(*link, path) ? QStringList{kClientConfiguration}
                                                       : QStringList{};
}

void VirtualCentral::readValue(const GattPath& path) {
    later([this, path](PlatformCentralDelegate& d) {
        if (const Link* link = connectedLink(path.peripheral))
            d.peripheralDidReadValue(path, link->lastValue, std::nullopt);
    });
}

OptionalError VirtualCentral::writeValueWithoutResponse(const GattPath& path, const Bytes& value) {
    const Link* link = connectedLink(path.peripheral);
    if (!link)
        return radioError("The device is not connected.");
    if (!BluetoothUuid::same(path.characteristic, link->desk->writeUuid()))
        return radioError("Writing is not permitted.");
    if (!link->writeRefusal.isEmpty()) {
        later([path, refusal = link->writeRefusal](PlatformCentralDelegate& d) {
            d.peripheralDidFailToWrite(path, BluetoothError{0, refusal});
        });
        return std::nullopt;
    }
    if (m_writeObserver)
        m_writeObserver(path, value);
    link->desk->writeFromHost(value);
    return std::nullopt;
}

void VirtualCentral::setNotifying(const QString& identifier, bool enabled) {
    Link* link = linkFor(identifier);
    link->notifying = enabled;
    link->desk->setSubscribed(enabled);
}

void VirtualCentral::setNotifyValue(const GattPath& path, bool enabled) {
    const Link* link = connectedLink(path.peripheral);
    if (!link || !isNotifyCharacteristic(*link, path)) {
        later([path](PlatformCentralDelegate& d) {
            d.peripheralDidUpdateNotificationState(
                path, false, radioError("The characteristic does not notify."));
        });
        return;
    }
    setNotifying(path.peripheral, enabled);
    later([path, enabled](PlatformCentralDelegate& d) {
        d.peripheralDidUpdateNotificationState(path, enabled, std::nullopt);
    });
}

void VirtualCentral::deskNotified(const QString& identifier, const Bytes& value) {
    Link* link = linkFor(identifier);
    if (!link || link->state != PeripheralConnected || !link->notifying)
        return;
    link->lastValue = value;
    if (const std::shared_ptr<PacketSink> sink = link->sink)
        sink->received(value);
    else if (delegate())
        delegate()->peripheralDidNotifyValue(
            GattPath{identifier, BluetoothUuid::normalized(link->desk->serviceUuid()),
                     BluetoothUuid::normalized(link->desk->notifyUuid())},
            value);
}

void VirtualCentral::setNotifySink(const GattPath& path, std::shared_ptr<PacketSink> sink) {
    Link* link = linkFor(path.peripheral);
    if (link && link->state == PeripheralConnected && isNotifyCharacteristic(*link, path))
        link->sink = std::move(sink);
}

PlatformCentral::ChannelWriter VirtualCentral::channelWriter(const GattPath& path) {
    if (!connectedLink(path.peripheral))
        return {};
    // Through the ordinary write, so write observers and refusals see channel frames too.
    return [this, path](const Bytes& frame) { return !writeValueWithoutResponse(path, frame); };
}

void VirtualCentral::injectNotification(const VirtualDesk* desk, const Bytes& value) {
    deskNotified(identifierOf(desk), value);
}

void VirtualCentral::readDescriptor(const GattPath& path, const QString& descriptor) {
    later([this, path, descriptor](PlatformCentralDelegate& d) {
        const Link* link = connectedLink(path.peripheral);
        if (!link)
            return;
        d.peripheralDidReadDescriptor(
            path, descriptor, Bytes{static_cast<std::uint8_t>(link->notifying), 0}, std::nullopt);
    });
}

void VirtualCentral::writeDescriptor(const GattPath& path, const QString& descriptor,
                                     const Bytes& value) {
    const Link* link = connectedLink(path.peripheral);
    if (link && isNotifyCharacteristic(*link, path) &&
        BluetoothUuid::same(descriptor, kClientConfiguration))
        setNotifying(path.peripheral, !value.empty() && (value.front() & 0x01) != 0);
    later([path, descriptor](PlatformCentralDelegate& d) {
        d.peripheralDidWriteDescriptor(path, descriptor, std::nullopt);
    });
}

void VirtualCentral::readRSSI(const QString& identifier) {
    later([this, identifier](PlatformCentralDelegate& d) {
        if (const Link* link = connectedLink(identifier))
            d.peripheralDidReadRSSI(identifier, link->desk->config().rssi, std::nullopt);
    });
}

} // namespace ostrel
