#include "QtGattLink.h"

#include "BluetoothUuid.h"
#include "BluezDataPath.h"

#include <QDBusConnection>
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
            return QtGattLink::uuidText(c.uuid());
    }
    return {};
}

const QBluetoothUuid
    kClientConfiguration(QBluetoothUuid::DescriptorType::ClientCharacteristicConfiguration);

} // namespace

QtGattLink::QtGattLink(QLowEnergyController* controller, const QString& identifier,
                       const QDBusConnection& bus, DelegateSource delegate)
    : QObject(controller), m_controller(controller), m_identifier(identifier),
      m_delegate(std::move(delegate)), m_dataPath(new BluezDataPath(bus, identifier, this)) {
    watchDataPath();
}

QtGattLink::~QtGattLink() = default;

QString QtGattLink::uuidText(const QBluetoothUuid& uuid) {
    return BluetoothUuid::normalized(uuid.toString(QUuid::WithoutBraces));
}

void QtGattLink::silence() {
    m_delegate = [] { return nullptr; };
    if (m_sink)
        setNotifySink(m_sinkPath, nullptr);
}

PlatformCentralDelegate* QtGattLink::delegate() const {
    return m_delegate();
}

void QtGattLink::report(std::function<void(PlatformCentralDelegate&)> call) {
    if (PlatformCentralDelegate* target = delegate())
        call(*target);
}

void QtGattLink::reportLater(std::function<void(PlatformCentralDelegate&)> call) {
    QMetaObject::invokeMethod(
        this, [this, call = std::move(call)] { report(call); }, Qt::QueuedConnection);
}

void QtGattLink::watchDataPath() {
    connect(m_dataPath, &BluezDataPath::linkLost, this, &QtGattLink::linkLost);
    connect(m_dataPath, &BluezDataPath::notified, this,
            [this](const GattPath& path, const QByteArray& value) {
                report([&](auto& d) { d.peripheralDidNotifyValue(path, toBytes(value)); });
            });
    connect(m_dataPath, &BluezDataPath::notifyingChanged, this,
            [this](const GattPath& path, bool notifying) {
                report([&](auto& d) {
                    d.peripheralDidUpdateNotificationState(path, notifying, std::nullopt);
                });
            });
    // BlueZ would not hand the socket out after all: QtBluetooth subscribes instead.
    connect(m_dataPath, &BluezDataPath::notifyRefused, this,
            [this](const GattPath& path) { setNotifyValue(path, true); });
    connect(
        m_dataPath, &BluezDataPath::writeRefused, this,
        [this](const GattPath& path, const QString& message) {
            report([&](auto& d) { d.peripheralDidFailToWrite(path, BluetoothError{0, message}); });
        });
}

QLowEnergyService* QtGattLink::serviceAt(const QString& service) const {
    return m_services.value(BluetoothUuid::normalized(service));
}

QLowEnergyService* QtGattLink::ensureService(const QString& service) {
    if (QLowEnergyService* existing = serviceAt(service))
        return existing;
    QLowEnergyService* created = m_controller->createServiceObject(toQtUuid(service), m_controller);
    if (!created)
        return nullptr;
    m_services.insert(BluetoothUuid::normalized(service), created);
    watchService(created);
    return created;
}

void QtGattLink::reportCharacteristics(const QString& service, const OptionalError& error) {
    if (error) {
        reportLater([=, this](auto& d) {
            d.peripheralDidDiscoverCharacteristics(m_identifier, service, error);
        });
        return;
    }
    m_dataPath->resolve([this, service] {
        report([&](auto& d) {
            d.peripheralDidDiscoverCharacteristics(m_identifier, service, std::nullopt);
        });
    });
}

void QtGattLink::watchService(QLowEnergyService* service) {
    const QString serviceUuid = uuidText(service->serviceUuid());
    connect(service, &QLowEnergyService::stateChanged, this,
            [this, serviceUuid](QLowEnergyService::ServiceState state) {
                if (state == QLowEnergyService::RemoteServiceDiscovered)
                    reportCharacteristics(serviceUuid, std::nullopt);
            });
    connect(service, &QObject::destroyed, this, [this, service] { m_lastWritten.remove(service); });
    connect(service, &QLowEnergyService::errorOccurred, this,
            [this, serviceUuid, service](QLowEnergyService::ServiceError error) {
                if (service->state() != QLowEnergyService::RemoteServiceDiscovered)
                    report([&](auto& d) {
                        d.peripheralDidDiscoverCharacteristics(
                            m_identifier, serviceUuid,
                            BluetoothError{0, QStringLiteral("service discovery failed")});
                    });
                else if (error == QLowEnergyService::CharacteristicWriteError &&
                         m_lastWritten.contains(service))
                    report([&](auto& d) {
                        d.peripheralDidFailToWrite(
                            GattPath{m_identifier, serviceUuid, m_lastWritten.value(service)},
                            BluetoothError{0, QStringLiteral("the characteristic write failed")});
                    });
            });
    watchValues(service, serviceUuid);
    watchDescriptors(service, serviceUuid);
}

void QtGattLink::watchValues(QLowEnergyService* service, const QString& serviceUuid) {
    auto pathOf = [this, serviceUuid](const QLowEnergyCharacteristic& c) {
        return GattPath{m_identifier, serviceUuid, uuidText(c.uuid())};
    };
    connect(service, &QLowEnergyService::characteristicChanged, this,
            [this, pathOf](const QLowEnergyCharacteristic& c, const QByteArray& value) {
                if (const std::shared_ptr<PacketSink> sink = m_sink;
                    sink && c.uuid() == m_sinkCharacteristic) {
                    sink->received({reinterpret_cast<const std::uint8_t*>(value.constData()),
                                    static_cast<std::size_t>(value.size())});
                    return;
                }
                report([&](auto& d) { d.peripheralDidNotifyValue(pathOf(c), toBytes(value)); });
            });
    connect(service, &QLowEnergyService::characteristicRead, this,
            [this, pathOf](const QLowEnergyCharacteristic& c, const QByteArray& value) {
                report([&](auto& d) {
                    d.peripheralDidReadValue(pathOf(c), toBytes(value), std::nullopt);
                });
            });
}

void QtGattLink::watchDescriptors(QLowEnergyService* service, const QString& serviceUuid) {
    connect(
        service, &QLowEnergyService::descriptorRead, this,
        [this, serviceUuid, service](const QLowEnergyDescriptor& descriptor,
                                     const QByteArray& value) {
            const GattPath path{m_identifier, serviceUuid, characteristicOf(service, descriptor)};
            report([&](auto& d) {
                d.peripheralDidReadDescriptor(path, uuidText(descriptor.uuid()), toBytes(value),
                                              std::nullopt);
            });
        });
    connect(
        service, &QLowEnergyService::descriptorWritten, this,
        [this, serviceUuid, service](const QLowEnergyDescriptor& descriptor,
                                     const QByteArray& value) {
            const GattPath path{m_identifier, serviceUuid, characteristicOf(service, descriptor)};
            report([&](auto& d) {
                if (descriptor.uuid() == kClientConfiguration)
                    d.peripheralDidUpdateNotificationState(
                        path, value != QByteArray::fromHex("0000"), std::nullopt);
                else
                    d.peripheralDidWriteDescriptor(path, uuidText(descriptor.uuid()), std::nullopt);
            });
        });
}

void QtGattLink::discoverCharacteristics(const QString& service) {
    QLowEnergyService* object = ensureService(service);
    if (!object)
        reportCharacteristics(service, BluetoothError{0, QStringLiteral("no such service")});
    else if (object->state() == QLowEnergyService::RemoteServiceDiscovered)
        reportCharacteristics(service, std::nullopt);
    else if (object->state() == QLowEnergyService::RemoteService)
        object->discoverDetails();
}

QList<PlatformCharacteristicInfo> QtGattLink::characteristics(const QString& service) const {
    QList<PlatformCharacteristicInfo> result;
    if (const QLowEnergyService* object = serviceAt(service)) {
        for (const QLowEnergyCharacteristic& c : object->characteristics())
            result.append({uuidText(c.uuid()), static_cast<int>(c.properties().toInt())});
    }
    return result;
}

QStringList QtGattLink::descriptors(const GattPath& path) const {
    QStringList uuids;
    if (const QLowEnergyService* object = serviceAt(path.service)) {
        for (const QLowEnergyDescriptor& d :
             object->characteristic(toQtUuid(path.characteristic)).descriptors())
            uuids.append(uuidText(d.uuid()));
    }
    return uuids;
}

void QtGattLink::readValue(const GattPath& path) {
    if (QLowEnergyService* object = serviceAt(path.service))
        object->readCharacteristic(object->characteristic(toQtUuid(path.characteristic)));
}

OptionalError QtGattLink::writeValueWithoutResponse(const GattPath& path, const Bytes& value) {
    if (m_dataPath->handlesWrite(path.characteristic))
        return m_dataPath->write(path.characteristic, toByteArray(value));
    QLowEnergyService* object = serviceAt(path.service);
    const QLowEnergyCharacteristic characteristic =
        object ? object->characteristic(toQtUuid(path.characteristic)) : QLowEnergyCharacteristic();
    if (!characteristic.isValid())
        return BluetoothError{0, QStringLiteral("the characteristic is not available")};
    m_lastWritten.insert(object, path.characteristic);
    object->writeCharacteristic(characteristic, toByteArray(value),
                                QLowEnergyService::WriteWithoutResponse);
    return std::nullopt;
}

void QtGattLink::setNotifyValue(const GattPath& path, bool enabled) {
    if (m_dataPath->setNotifying(path.characteristic, enabled))
        return;
    QLowEnergyService* object = serviceAt(path.service);
    const QLowEnergyDescriptor configuration =
        object
            ? object->characteristic(toQtUuid(path.characteristic)).descriptor(kClientConfiguration)
            : QLowEnergyDescriptor();
    if (!configuration.isValid()) {
        reportLater([path](auto& d) {
            d.peripheralDidUpdateNotificationState(
                path, false, BluetoothError{0, QStringLiteral("notifications are not supported")});
        });
        return;
    }
    object->writeDescriptor(configuration, enabled
                                               ? QLowEnergyCharacteristic::CCCDEnableNotification
                                               : QLowEnergyCharacteristic::CCCDDisable);
}

void QtGattLink::setNotifySink(const GattPath& path, std::shared_ptr<PacketSink> sink) {
    m_dataPath->setNotifySink(path.characteristic, sink);
    m_sink = std::move(sink);
    m_sinkPath = path;
    m_sinkCharacteristic = toQtUuid(path.characteristic);
}

PlatformCentral::ChannelWriter QtGattLink::channelWriter(const GattPath& path) {
    if (PlatformCentral::ChannelWriter writer = m_dataPath->channelWriter(path.characteristic))
        return writer;
    if (!serviceAt(path.service))
        return {};
    // A stack other than BlueZ: QtBluetooth finds the characteristic for every frame.
    return [this, path](const Bytes& frame) { return !writeValueWithoutResponse(path, frame); };
}

void QtGattLink::readDescriptor(const GattPath& path, const QString& descriptor) {
    if (QLowEnergyService* object = serviceAt(path.service))
        object->readDescriptor(
            object->characteristic(toQtUuid(path.characteristic)).descriptor(toQtUuid(descriptor)));
}

void QtGattLink::writeDescriptor(const GattPath& path, const QString& descriptor,
                                 const Bytes& value) {
    if (QLowEnergyService* object = serviceAt(path.service))
        object->writeDescriptor(
            object->characteristic(toQtUuid(path.characteristic)).descriptor(toQtUuid(descriptor)),
            toByteArray(value));
}

} // namespace ostrel
