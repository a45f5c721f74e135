#include "VirtualCentral.h"

#include "VirtualDesk.h"
#include "core/Scheduler.h"
#include "sim/VirtualGattLayout.h"
#include "transport/BluetoothUuid.h"

namespace ostrel {

namespace {

BluetoothError radioError(const char* text) {
    return BluetoothError{0, QString::fromLatin1(text)};
}

} // namespace

VirtualCentral::VirtualCentral(QObject* parent)
    : PlatformCentral(parent),
      m_scan(m_links, kDefaultAdvertisingInterval, this,
             [this](const QString& identifier, const QVariantMap& data, int rssi) {
                 if (delegate())
                     delegate()->centralDidDiscoverPeripheral(identifier, data, rssi);
             }) {}

VirtualCentral::~VirtualCentral() {
    m_scan.stop();
}

void VirtualCentral::addDesk(VirtualDesk* desk) {
    const QString identifier = m_links.add(desk);
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
    return m_links.identifierOf(desk);
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
        for (const QString& identifier : m_links.identifiers())
            endLink(identifier, radioError("Bluetooth is powered off."));
    }
    if (delegate())
        delegate()->centralDidUpdateState(state());
    m_scan.setPowered(powered);
    if (powered) {
        for (const QString& identifier : m_links.identifiers())
            tryConnect(identifier);
    }
}

void VirtualCentral::scanForPeripherals(const QStringList& services, const QVariantMap&) {
    m_scan.start(services);
}

void VirtualCentral::stopScan() {
    m_scan.stop();
}

void VirtualCentral::injectSighting(const QString& identifier, const QVariantMap& advertisementData,
                                    int rssi) {
    m_scan.inject(identifier, advertisementData, rssi);
}

QStringList VirtualCentral::retrieveConnectedPeripherals(const QStringList& services) const {
    QStringList connected;
    for (const QString& identifier : m_links.identifiers()) {
        const VirtualLink* link = m_links.connected(identifier);
        if (!link)
            continue;
        const bool wanted = services.isEmpty() ||
                            std::any_of(services.begin(), services.end(), [&](const QString& s) {
                                return BluetoothUuid::same(s, link->desk->serviceUuid());
                            });
        if (wanted)
            connected.append(identifier);
    }
    return connected;
}

bool VirtualCentral::isKnownPeripheral(const QString& identifier) const {
    return m_links.find(identifier) != nullptr;
}

QString VirtualCentral::peripheralName(const QString& identifier) const {
    const VirtualLink* link = m_links.find(identifier);
    return link ? link->desk->name() : QString();
}

int VirtualCentral::peripheralState(const QString& identifier) const {
    const VirtualLink* link = m_links.find(identifier);
    return link ? link->state : PeripheralDisconnected;
}

// ---- Links ----

void VirtualCentral::setConnectFailure(const VirtualDesk* desk, const QString& text) {
    if (VirtualLink* link = m_links.find(identifierOf(desk)))
        link->connectFailure = text;
}

void VirtualCentral::setWriteRefusal(const VirtualDesk* desk, const QString& text) {
    if (VirtualLink* link = m_links.find(identifierOf(desk)))
        link->writeRefusal = text;
}

void VirtualCentral::connectPeripheral(const QString& identifier, const QVariantMap&) {
    VirtualLink* link = m_links.find(identifier);
    if (!link || link->state == PeripheralConnected)
        return;
    link->state = PeripheralConnecting;
    tryConnect(identifier);
}

// A pending connect completes once the desk can be reached, however long that takes.
void VirtualCentral::tryConnect(const QString& identifier) {
    const VirtualLink* link = m_links.find(identifier);
    if (!link || link->state != PeripheralConnecting || !m_powered || !link->desk->isAdvertising())
        return;
    Scheduler::instance().after(m_latency, this, [this, identifier] {
        VirtualLink* pending = m_links.find(identifier);
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
    VirtualLink* link = m_links.find(identifier);
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
    VirtualLink* link = m_links.find(identifier);
    if (!link || link->state != PeripheralConnected)
        return;
    unlink(*link);
    if (delegate())
        delegate()->centralDidDisconnectPeripheral(identifier, error);
}

void VirtualCentral::unlink(VirtualLink& link) {
    link.desk->setSubscribed(false);
    link.state = PeripheralDisconnected;
    link.notifying = false;
    link.sink = nullptr;
}

// ---- GATT ----

void VirtualCentral::discoverServices(const QString& identifier, const QStringList&) {
    later([this, identifier](PlatformCentralDelegate& d) {
        if (m_links.connected(identifier))
            d.peripheralDidDiscoverServices(identifier, std::nullopt);
    });
}

QStringList VirtualCentral::services(const QString& identifier) const {
    const VirtualLink* link = m_links.connected(identifier);
    return link ? QStringList{VirtualGattLayout(*link->desk).service()} : QStringList{};
}

void VirtualCentral::discoverCharacteristics(const QString& identifier, const QString& service,
                                             const QStringList&) {
    later([this, identifier, service](PlatformCentralDelegate& d) {
        if (m_links.connected(identifier))
            d.peripheralDidDiscoverCharacteristics(identifier, service, std::nullopt);
    });
}

QList<PlatformCharacteristicInfo> VirtualCentral::characteristics(const QString& identifier,
                                                                  const QString& service) const {
    const VirtualLink* link = m_links.connected(identifier);
    return link ? VirtualGattLayout(*link->desk).characteristics(service)
                : QList<PlatformCharacteristicInfo>{};
}

void VirtualCentral::discoverDescriptors(const GattPath& path) {
    later([this, path](PlatformCentralDelegate& d) {
        if (m_links.connected(path.peripheral))
            d.peripheralDidDiscoverDescriptors(path, std::nullopt);
    });
}

QStringList VirtualCentral::descriptors(const GattPath& path) const {
    const VirtualLink* link = m_links.connected(path.peripheral);
    return link ? VirtualGattLayout(*link->desk).descriptors(path) : QStringList{};
}

void VirtualCentral::readValue(const GattPath& path) {
    later([this, path](PlatformCentralDelegate& d) {
        if (const VirtualLink* link = m_links.connected(path.peripheral))
            d.peripheralDidReadValue(path, link->lastValue, std::nullopt);
    });
}

OptionalError VirtualCentral::writeValueWithoutResponse(const GattPath& path, const Bytes& value) {
    const VirtualLink* link = m_links.connected(path.peripheral);
    if (!link)
        return radioError("The device is not connected.");
    if (!VirtualGattLayout(*link->desk).isWritable(path))
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
    VirtualLink* link = m_links.find(identifier);
    link->notifying = enabled;
    link->desk->setSubscribed(enabled);
}

void VirtualCentral::setNotifyValue(const GattPath& path, bool enabled) {
    const VirtualLink* link = m_links.connected(path.peripheral);
    if (!link || !VirtualGattLayout(*link->desk).isNotify(path)) {
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
    VirtualLink* link = m_links.find(identifier);
    if (!link || link->state != PeripheralConnected || !link->notifying)
        return;
    link->lastValue = value;
    if (const std::shared_ptr<PacketSink> sink = link->sink)
        sink->received(value);
    else if (delegate())
        delegate()->peripheralDidNotifyValue(VirtualGattLayout(*link->desk).notifyPath(identifier),
                                             value);
}

void VirtualCentral::setNotifySink(const GattPath& path, std::shared_ptr<PacketSink> sink) {
    VirtualLink* link = m_links.find(path.peripheral);
    if (link && link->state == PeripheralConnected && VirtualGattLayout(*link->desk).isNotify(path))
        link->sink = std::move(sink);
}

PlatformCentral::ChannelWriter VirtualCentral::channelWriter(const GattPath& path) {
    if (!m_links.connected(path.peripheral))
        return {};
    // Through the ordinary write, so write observers and refusals see channel frames too.
    return [this, path](const Bytes& frame) { return !writeValueWithoutResponse(path, frame); };
}

void VirtualCentral::injectNotification(const VirtualDesk* desk, const Bytes& value) {
    deskNotified(identifierOf(desk), value);
}

void VirtualCentral::readDescriptor(const GattPath& path, const QString& descriptor) {
    later([this, path, descriptor](PlatformCentralDelegate& d) {
        const VirtualLink* link = m_links.connected(path.peripheral);
        if (!link)
            return;
        d.peripheralDidReadDescriptor(
            path, descriptor, Bytes{static_cast<std::uint8_t>(link->notifying), 0}, std::nullopt);
    });
}

void VirtualCentral::writeDescriptor(const GattPath& path, const QString& descriptor,
                                     const Bytes& value) {
    const VirtualLink* link = m_links.connected(path.peripheral);
    if (link && VirtualGattLayout(*link->desk).isNotify(path) &&
        BluetoothUuid::same(descriptor, VirtualGattLayout::kClientConfiguration))
        setNotifying(path.peripheral, !value.empty() && (value.front() & 0x01) != 0);
    later([path, descriptor](PlatformCentralDelegate& d) {
        d.peripheralDidWriteDescriptor(path, descriptor, std::nullopt);
    });
}

void VirtualCentral::readRSSI(const QString& identifier) {
    later([this, identifier](PlatformCentralDelegate& d) {
        if (const VirtualLink* link = m_links.connected(identifier))
            d.peripheralDidReadRSSI(identifier, link->desk->config().rssi, std::nullopt);
    });
}

} // namespace ostrel
