#include "QtPlatformCentral.h"

#include "BluetoothUuid.h"
#include "QtGattLink.h"
#include "platform/BluetoothAccess.h"
#include "platform/Platform.h"

#include <QBluetoothDeviceDiscoveryAgent>
#include <QBluetoothLocalDevice>
#include <QDBusConnection>
#include <QLowEnergyController>
#include <QMetaObject>

namespace ostrel {

QtPlatformCentral::QtPlatformCentral(QObject* parent) : PlatformCentral(parent) {
    m_local = new QBluetoothLocalDevice(this);
    m_agent = new QBluetoothDeviceDiscoveryAgent(this);
    // A zero time-out scans until told to stop; the scan's end is the caller's timer.
    m_agent->setLowEnergyDiscoveryTimeout(0);
    connect(m_local, &QBluetoothLocalDevice::hostModeStateChanged, this, [this] { updateState(); });
    // Stopping is asynchronous on some platforms: a scan asked for meanwhile starts once the
    // agent has really stopped, and one the platform ended by itself is resumed.
    connect(m_agent, &QBluetoothDeviceDiscoveryAgent::canceled, this,
            [this] { startAgentIfWanted(); });
    connect(m_agent, &QBluetoothDeviceDiscoveryAgent::finished, this,
            [this] { startAgentIfWanted(); });
    connect(m_agent, &QBluetoothDeviceDiscoveryAgent::deviceDiscovered, this,
            [this](const QBluetoothDeviceInfo& info) { deviceSighted(info); });
    connect(m_agent, &QBluetoothDeviceDiscoveryAgent::deviceUpdated, this,
            [this](const QBluetoothDeviceInfo& info, QBluetoothDeviceInfo::Fields) {
                deviceSighted(info);
            });
    m_state = m_local->isValid() ? StatePoweredOff : StateUnsupported;
    updateState();
}

QtPlatformCentral::~QtPlatformCentral() = default;

void QtPlatformCentral::later(std::function<void()> report) {
    QMetaObject::invokeMethod(this, std::move(report), Qt::QueuedConnection);
}

void QtPlatformCentral::updateState() {
    int next = StateUnsupported;
    if (m_local->isValid())
        next = m_local->hostMode() == QBluetoothLocalDevice::HostPoweredOff ? StatePoweredOff
                                                                            : StatePoweredOn;
    if (next == m_state)
        return;
    m_state = next;
    if (m_state == StatePoweredOn)
        startAgentIfWanted();
    if (delegate())
        delegate()->centralDidUpdateState(m_state);
}

int QtPlatformCentral::stackProblem() const {
    if (m_local->isValid())
        return StackUsable;
    switch (Platform::get<BluetoothAccess>().problem()) {
    case BluetoothAccess::NotRunning:
        return StackNotRunning;
    case BluetoothAccess::Refused:
        return StackRefusesUser;
    default:
        return StackUsable;
    }
}

int QtPlatformCentral::state() const {
    return m_state;
}

QString QtPlatformCentral::identifierOf(const QBluetoothDeviceInfo& info) {
    // Linux and Windows name devices by address, Apple's platforms by a UUID.
    return info.deviceUuid().isNull() ? info.address().toString()
                                      : info.deviceUuid().toString(QUuid::WithoutBraces).toUpper();
}

void QtPlatformCentral::scanForPeripherals(const QStringList& services, const QVariantMap&) {
    m_scanRequested = true;
    m_scanServices.clear();
    for (const QString& service : services)
        m_scanServices.append(BluetoothUuid::normalized(service));
    startAgentIfWanted();
}

void QtPlatformCentral::startAgentIfWanted() {
    if (m_scanRequested && m_state == StatePoweredOn && !m_agent->isActive())
        m_agent->start(QBluetoothDeviceDiscoveryAgent::LowEnergyMethod);
}

void QtPlatformCentral::stopScan() {
    m_scanRequested = false;
    if (m_agent->isActive())
        m_agent->stop();
}

void QtPlatformCentral::deviceSighted(const QBluetoothDeviceInfo& info) {
    if (!(info.coreConfigurations() & QBluetoothDeviceInfo::LowEnergyCoreConfiguration))
        return;
    QStringList uuids;
    for (const QBluetoothUuid& uuid : info.serviceUuids())
        uuids.append(QtGattLink::uuidText(uuid));
    const bool wanted =
        m_scanServices.isEmpty() ||
        std::any_of(m_scanServices.begin(), m_scanServices.end(),
                    [&](const QString& service) { return uuids.contains(service); });
    if (!wanted || !m_scanRequested)
        return;
    const QString identifier = identifierOf(info);
    m_links[identifier].info = info;
    if (delegate())
        delegate()->centralDidDiscoverPeripheral(
            identifier,
            QVariantMap{{QString::fromLatin1(kLocalNameKey), info.name()},
                        {QString::fromLatin1(kServiceUUIDsKey), uuids}},
            info.rssi());
}

QStringList QtPlatformCentral::retrieveConnectedPeripherals(const QStringList&) const {
    QStringList connected;
    for (auto it = m_links.begin(); it != m_links.end(); ++it) {
        if (it->state == PeripheralConnected)
            connected.append(it.key());
    }
    return connected;
}

bool QtPlatformCentral::isKnownPeripheral(const QString& identifier) const {
    return m_links.contains(identifier);
}

QString QtPlatformCentral::peripheralName(const QString& identifier) const {
    return m_links.value(identifier).info.name();
}

int QtPlatformCentral::peripheralState(const QString& identifier) const {
    return m_links.value(identifier).state;
}

void QtPlatformCentral::connectPeripheral(const QString& identifier, const QVariantMap&) {
    auto found = m_links.find(identifier);
    if (found == m_links.end() || !found->info.isValid()) {
        later([this, identifier] {
            if (delegate())
                delegate()->centralDidFailToConnectPeripheral(
                    identifier, BluetoothError{0, QStringLiteral("unknown device")});
        });
        return;
    }
    if (found->controller)
        return;
    auto* controller = QLowEnergyController::createCentral(found->info, this);
    found->controller = controller;
    found->state = PeripheralConnecting;
    found->gatt = new QtGattLink(controller, identifier, QDBusConnection::systemBus(),
                                 [this] { return delegate(); });
    watchController(identifier, controller);
    controller->connectToDevice();
}

void QtPlatformCentral::watchController(const QString& identifier,
                                        QLowEnergyController* controller) {
    connect(controller, &QLowEnergyController::connected, this, [this, identifier] {
        m_links[identifier].state = PeripheralConnected;
        if (delegate())
            delegate()->centralDidConnectPeripheral(identifier);
    });
    connect(controller, &QLowEnergyController::disconnected, this, [this, identifier] {
        closeLink(identifier,
                  m_links.value(identifier).lost
                      ? OptionalError(BluetoothError{0, QStringLiteral("the link was lost")})
                      : std::nullopt);
    });
    connect(controller, &QLowEnergyController::errorOccurred, this,
            [this, identifier, controller](QLowEnergyController::Error) {
                const BluetoothError failure{0, controller->errorString()};
                if (m_links.value(identifier).state == PeripheralConnecting) {
                    closeLink(identifier, std::nullopt);
                    if (delegate())
                        delegate()->centralDidFailToConnectPeripheral(identifier, failure);
                } else {
                    closeLink(identifier, failure);
                }
            });
    connect(controller, &QLowEnergyController::discoveryFinished, this, [this, identifier] {
        m_links[identifier].servicesDiscovered = true;
        if (delegate())
            delegate()->peripheralDidDiscoverServices(identifier, std::nullopt);
    });
    // The link is gone even if BlueZ has not said so on the bus yet. It ends there first, so
    // that a reconnection cannot meet the old link still being taken down.
    connect(m_links[identifier].gatt, &QtGattLink::linkLost, this, [this, identifier, controller] {
        Link& link = m_links[identifier];
        if (link.state != PeripheralConnected)
            return; // already ending
        link.lost = true;
        link.state = PeripheralDisconnecting;
        controller->disconnectFromDevice();
    });
}

void QtPlatformCentral::closeLink(const QString& identifier, const OptionalError& error) {
    auto found = m_links.find(identifier);
    if (found == m_links.end() || !found->controller)
        return;
    const bool wasConnected =
        found->state == PeripheralConnected || found->state == PeripheralDisconnecting;
    found->controller->disconnect(this);
    found->gatt->disconnect(this);
    found->gatt->silence();
    found->controller->deleteLater();
    found->controller = nullptr;
    found->gatt = nullptr; // goes with the controller
    found->servicesDiscovered = false;
    found->lost = false;
    found->state = PeripheralDisconnected;
    if (wasConnected && delegate())
        delegate()->centralDidDisconnectPeripheral(identifier, error);
}

void QtPlatformCentral::cancelPeripheralConnection(const QString& identifier) {
    const Link link = m_links.value(identifier);
    if (!link.controller)
        return;
    if (link.state == PeripheralConnected) {
        // Qt reports the end through `disconnected`, which closes the link.
        m_links[identifier].state = PeripheralDisconnecting;
        link.controller->disconnectFromDevice();
    } else {
        closeLink(identifier, std::nullopt);
    }
}

void QtPlatformCentral::discoverServices(const QString& identifier, const QStringList&) {
    const Link link = m_links.value(identifier);
    if (!link.controller)
        return;
    if (link.servicesDiscovered) {
        later([this, identifier] {
            if (delegate())
                delegate()->peripheralDidDiscoverServices(identifier, std::nullopt);
        });
        return;
    }
    // One discovery at a time; its end answers every request made meanwhile.
    if (link.controller->state() != QLowEnergyController::DiscoveringState)
        link.controller->discoverServices();
}

QStringList QtPlatformCentral::services(const QString& identifier) const {
    QStringList uuids;
    if (const QLowEnergyController* controller = m_links.value(identifier).controller) {
        for (const QBluetoothUuid& uuid : controller->services())
            uuids.append(QtGattLink::uuidText(uuid));
    }
    return uuids;
}

QtGattLink* QtPlatformCentral::gattOf(const QString& identifier) const {
    const auto found = m_links.constFind(identifier);
    return found == m_links.constEnd() ? nullptr : found->gatt;
}

void QtPlatformCentral::discoverCharacteristics(const QString& identifier, const QString& service,
                                                const QStringList&) {
    if (QtGattLink* gatt = gattOf(identifier)) {
        gatt->discoverCharacteristics(service);
        return;
    }
    later([this, identifier, service] {
        if (delegate())
            delegate()->peripheralDidDiscoverCharacteristics(
                identifier, service, BluetoothError{0, QStringLiteral("no such service")});
    });
}

QList<PlatformCharacteristicInfo> QtPlatformCentral::characteristics(const QString& identifier,
                                                                     const QString& service) const {
    const QtGattLink* gatt = gattOf(identifier);
    return gatt ? gatt->characteristics(service) : QList<PlatformCharacteristicInfo>();
}

void QtPlatformCentral::discoverDescriptors(const GattPath& path) {
    // Qt finds descriptors together with the characteristics.
    later([this, path] {
        if (delegate())
            delegate()->peripheralDidDiscoverDescriptors(path, std::nullopt);
    });
}

QStringList QtPlatformCentral::descriptors(const GattPath& path) const {
    const QtGattLink* gatt = gattOf(path.peripheral);
    return gatt ? gatt->descriptors(path) : QStringList();
}

void QtPlatformCentral::readValue(const GattPath& path) {
    if (QtGattLink* gatt = gattOf(path.peripheral))
        gatt->readValue(path);
}

OptionalError QtPlatformCentral::writeValueWithoutResponse(const GattPath& path,
                                                           const Bytes& value) {
    if (QtGattLink* gatt = gattOf(path.peripheral))
        return gatt->writeValueWithoutResponse(path, value);
    return BluetoothError{0, QStringLiteral("the characteristic is not available")};
}

void QtPlatformCentral::setNotifyValue(const GattPath& path, bool enabled) {
    if (QtGattLink* gatt = gattOf(path.peripheral)) {
        gatt->setNotifyValue(path, enabled);
        return;
    }
    later([this, path] {
        if (delegate())
            delegate()->peripheralDidUpdateNotificationState(
                path, false, BluetoothError{0, QStringLiteral("notifications are not supported")});
    });
}

void QtPlatformCentral::readDescriptor(const GattPath& path, const QString& descriptor) {
    if (QtGattLink* gatt = gattOf(path.peripheral))
        gatt->readDescriptor(path, descriptor);
}

void QtPlatformCentral::writeDescriptor(const GattPath& path, const QString& descriptor,
                                        const Bytes& value) {
    if (QtGattLink* gatt = gattOf(path.peripheral))
        gatt->writeDescriptor(path, descriptor, value);
}

void QtPlatformCentral::setNotifySink(const GattPath& path, std::shared_ptr<PacketSink> sink) {
    if (QtGattLink* gatt = gattOf(path.peripheral))
        gatt->setNotifySink(path, std::move(sink));
}

PlatformCentral::ChannelWriter QtPlatformCentral::channelWriter(const GattPath& path) {
    QtGattLink* gatt = gattOf(path.peripheral);
    return gatt ? gatt->channelWriter(path) : ChannelWriter();
}

void QtPlatformCentral::readRSSI(const QString& identifier) {
    // Qt 6.4 has no RSSI read on a live link; the last advertised value is the best known.
    const int rssi = m_links.value(identifier).info.rssi();
    later([this, identifier, rssi] {
        if (delegate())
            delegate()->peripheralDidReadRSSI(identifier, rssi, std::nullopt);
    });
}

} // namespace ostrel
