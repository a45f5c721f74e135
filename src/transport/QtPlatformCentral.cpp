#include "QtPlatformCentral.h"

#include "BluetoothUuid.h"
#include "BluezAccess.h"

#include <QBluetoothDeviceDiscoveryAgent>
#include <QBluetoothLocalDevice>
#include <QLowEnergyController>
#include <QLowEnergyService>
#include <QMetaObject>

namespace ostrel {

namespace {

QBluetoothUuid toQtUuid(const QString& uuid) {
    const QString text = BluetoothUuid::normalized(uuid);
    bool ok = false;
    const uint value = text.toUInt(&ok, 16);
    if (ok && text.size() == 4)
        return QBluetoothUuid(static_cast<quint16>(value));
    if (ok && text.size() == 8)
        return QBluetoothUuid(static_cast<quint32>(value));
    return QBluetoothUuid(text);
}

QString fromQtUuid(const QBluetoothUuid& uuid) {
    return BluetoothUuid::normalized(uuid.toString(QUuid::WithoutBraces));
}

QByteArray toByteArray(const Bytes& bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()),
                      static_cast<qsizetype>(bytes.size()));
}

Bytes toBytes(const QByteArray& data) {
    return Bytes(data.begin(), data.end());
}

// Qt does not tell which characteristic a descriptor belongs to; look it up.
QString characteristicOf(const QLowEnergyService* service, const QLowEnergyDescriptor& descriptor) {
    for (const QLowEnergyCharacteristic& c : service->characteristics()) {
        if (c.descriptors().contains(descriptor))
            return fromQtUuid(c.uuid());
    }
    return {};
}

const QBluetoothUuid
    kClientConfiguration(QBluetoothUuid::DescriptorType::ClientCharacteristicConfiguration);

} // namespace

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
    switch (BluezAccess::check()) {
    case BluezAccess::NotRunning:
        return StackNotRunning;
    case BluezAccess::Refused:
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
        uuids.append(fromQtUuid(uuid));
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
    connect(controller, &QLowEnergyController::connected, this, [this, identifier] {
        m_links[identifier].state = PeripheralConnected;
        if (delegate())
            delegate()->centralDidConnectPeripheral(identifier);
    });
    connect(controller, &QLowEnergyController::disconnected, this,
            [this, identifier] { closeLink(identifier, std::nullopt); });
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
    controller->connectToDevice();
}

void QtPlatformCentral::closeLink(const QString& identifier, const OptionalError& error) {
    auto found = m_links.find(identifier);
    if (found == m_links.end() || !found->controller)
        return;
    const bool wasConnected =
        found->state == PeripheralConnected || found->state == PeripheralDisconnecting;
    found->controller->disconnect(this);
    found->controller->deleteLater();
    found->controller = nullptr;
    found->services.clear(); // children of the controller
    found->servicesDiscovered = false;
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
            uuids.append(fromQtUuid(uuid));
    }
    return uuids;
}

QLowEnergyService* QtPlatformCentral::serviceAt(const QString& identifier,
                                                const QString& service) const {
    return m_links.value(identifier).services.value(BluetoothUuid::normalized(service));
}

QLowEnergyService* QtPlatformCentral::ensureService(const QString& identifier,
                                                    const QString& service) {
    if (QLowEnergyService* existing = serviceAt(identifier, service))
        return existing;
    Link& link = m_links[identifier];
    if (!link.controller)
        return nullptr;
    QLowEnergyService* created =
        link.controller->createServiceObject(toQtUuid(service), link.controller);
    if (!created)
        return nullptr;
    link.services.insert(BluetoothUuid::normalized(service), created);
    watchService(identifier, created);
    return created;
}

void QtPlatformCentral::watchService(const QString& identifier, QLowEnergyService* service) {
    const QString serviceUuid = fromQtUuid(service->serviceUuid());
    auto pathOf = [identifier, serviceUuid](const QLowEnergyCharacteristic& c) {
        return GattPath{identifier, serviceUuid, fromQtUuid(c.uuid())};
    };
    connect(service, &QLowEnergyService::stateChanged, this,
            [this, identifier, serviceUuid](QLowEnergyService::ServiceState state) {
                if (state == QLowEnergyService::RemoteServiceDiscovered && delegate())
                    delegate()->peripheralDidDiscoverCharacteristics(identifier, serviceUuid,
                                                                     std::nullopt);
            });
    connect(service, &QObject::destroyed, this, [this, service] { m_lastWritten.remove(service); });
    connect(service, &QLowEnergyService::errorOccurred, this,
            [this, identifier, serviceUuid, service](QLowEnergyService::ServiceError error) {
                if (!delegate())
                    return;
                if (service->state() != QLowEnergyService::RemoteServiceDiscovered)
                    delegate()->peripheralDidDiscoverCharacteristics(
                        identifier, serviceUuid,
                        BluetoothError{0, QStringLiteral("service discovery failed")});
                else if (error == QLowEnergyService::CharacteristicWriteError &&
                         m_lastWritten.contains(service))
                    delegate()->peripheralDidFailToWrite(
                        GattPath{identifier, serviceUuid, m_lastWritten.value(service)},
                        BluetoothError{0, QStringLiteral("the characteristic write failed")});
            });
    connect(service, &QLowEnergyService::characteristicChanged, this,
            [this, pathOf](const QLowEnergyCharacteristic& c, const QByteArray& value) {
                if (delegate())
                    delegate()->peripheralDidNotifyValue(pathOf(c), toBytes(value));
            });
    connect(service, &QLowEnergyService::characteristicRead, this,
            [this, pathOf](const QLowEnergyCharacteristic& c, const QByteArray& value) {
                if (delegate())
                    delegate()->peripheralDidReadValue(pathOf(c), toBytes(value), std::nullopt);
            });
    connect(service, &QLowEnergyService::descriptorRead, this,
            [this, identifier, serviceUuid, service](const QLowEnergyDescriptor& d,
                                                     const QByteArray& value) {
                if (delegate())
                    delegate()->peripheralDidReadDescriptor(
                        GattPath{identifier, serviceUuid, characteristicOf(service, d)},
                        fromQtUuid(d.uuid()), toBytes(value), std::nullopt);
            });
    connect(service, &QLowEnergyService::descriptorWritten, this,
            [this, identifier, serviceUuid, service](const QLowEnergyDescriptor& d,
                                                     const QByteArray& value) {
                if (!delegate())
                    return;
                const GattPath path{identifier, serviceUuid, characteristicOf(service, d)};
                if (d.uuid() == kClientConfiguration)
                    delegate()->peripheralDidUpdateNotificationState(
                        path, value != QByteArray::fromHex("0000"), std::nullopt);
                else
                    delegate()->peripheralDidWriteDescriptor(path, fromQtUuid(d.uuid()),
                                                             std::nullopt);
            });
}

void QtPlatformCentral::discoverCharacteristics(const QString& identifier, const QString& service,
                                                const QStringList&) {
    QLowEnergyService* object = ensureService(identifier, service);
    if (!object) {
        later([this, identifier, service] {
            if (delegate())
                delegate()->peripheralDidDiscoverCharacteristics(
                    identifier, service, BluetoothError{0, QStringLiteral("no such service")});
        });
        return;
    }
    if (object->state() == QLowEnergyService::RemoteServiceDiscovered) {
        later([this, identifier, service] {
            if (delegate())
                delegate()->peripheralDidDiscoverCharacteristics(identifier, service, std::nullopt);
        });
        return;
    }
    if (object->state() == QLowEnergyService::RemoteService)
        object->discoverDetails();
}

QList<PlatformCharacteristicInfo> QtPlatformCentral::characteristics(const QString& identifier,
                                                                     const QString& service) const {
    QList<PlatformCharacteristicInfo> result;
    if (const QLowEnergyService* object = serviceAt(identifier, service)) {
        for (const QLowEnergyCharacteristic& c : object->characteristics())
            result.append({fromQtUuid(c.uuid()), static_cast<int>(c.properties().toInt())});
    }
    return result;
}

void QtPlatformCentral::discoverDescriptors(const GattPath& path) {
    // Qt finds descriptors together with the characteristics.
    later([this, path] {
        if (delegate())
            delegate()->peripheralDidDiscoverDescriptors(path, std::nullopt);
    });
}

QStringList QtPlatformCentral::descriptors(const GattPath& path) const {
    QStringList uuids;
    if (const QLowEnergyService* object = serviceAt(path.peripheral, path.service)) {
        for (const QLowEnergyDescriptor& d :
             object->characteristic(toQtUuid(path.characteristic)).descriptors())
            uuids.append(fromQtUuid(d.uuid()));
    }
    return uuids;
}

void QtPlatformCentral::readValue(const GattPath& path) {
    if (QLowEnergyService* object = serviceAt(path.peripheral, path.service))
        object->readCharacteristic(object->characteristic(toQtUuid(path.characteristic)));
}

OptionalError QtPlatformCentral::writeValueWithoutResponse(const GattPath& path,
                                                           const Bytes& value) {
    QLowEnergyService* object = serviceAt(path.peripheral, path.service);
    const QLowEnergyCharacteristic characteristic =
        object ? object->characteristic(toQtUuid(path.characteristic)) : QLowEnergyCharacteristic();
    if (!characteristic.isValid())
        return BluetoothError{0, QStringLiteral("the characteristic is not available")};
    m_lastWritten.insert(object, path.characteristic);
    object->writeCharacteristic(characteristic, toByteArray(value),
                                QLowEnergyService::WriteWithoutResponse);
    return std::nullopt;
}

void QtPlatformCentral::setNotifyValue(const GattPath& path, bool enabled) {
    QLowEnergyService* object = serviceAt(path.peripheral, path.service);
    const QLowEnergyDescriptor configuration =
        object
            ? object->characteristic(toQtUuid(path.characteristic)).descriptor(kClientConfiguration)
            : QLowEnergyDescriptor();
    if (!configuration.isValid()) {
        later([this, path] {
            if (delegate())
                delegate()->peripheralDidUpdateNotificationState(
                    path, false,
                    BluetoothError{0, QStringLiteral("notifications are not supported")});
        });
        return;
    }
    object->writeDescriptor(configuration, enabled
                                               ? QLowEnergyCharacteristic::CCCDEnableNotification
                                               : QLowEnergyCharacteristic::CCCDDisable);
}

void QtPlatformCentral::readDescriptor(const GattPath& path, const QString& descriptor) {
    if (QLowEnergyService* object = serviceAt(path.peripheral, path.service))
        object->readDescriptor(
            object->characteristic(toQtUuid(path.characteristic)).descriptor(toQtUuid(descriptor)));
}

void QtPlatformCentral::writeDescriptor(const GattPath& path, const QString& descriptor,
                                        const Bytes& value) {
    if (QLowEnergyService* object = serviceAt(path.peripheral, path.service))
        object->writeDescriptor(
            object->characteristic(toQtUuid(path.characteristic)).descriptor(toQtUuid(descriptor)),
            toByteArray(value));
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
