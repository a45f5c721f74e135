#include "BluetoothPeripheral.h"

#include "BluetoothCenterManager.h"
#include "BluetoothUuid.h"
#include "PlatformCentral.h"
#include "core/Scheduler.h"

#include <algorithm>

namespace ostrel {

BluetoothPeripheral::BluetoothPeripheral(const QString& identifier,
                                         BluetoothCenterManager* centerManager)
    : m_identifier(identifier), m_centerManager(centerManager) {}

BluetoothCenterManager* BluetoothPeripheral::centerManager() const {
    return m_centerManager.data();
}

PlatformCentral* BluetoothPeripheral::platform() const {
    return m_centerManager ? m_centerManager->manager() : nullptr;
}

QString BluetoothPeripheral::name() const {
    const QVariant local =
        m_advertisementData.value(QString::fromLatin1(PlatformCentral::kLocalNameKey));
    if (local.typeId() == QMetaType::QString && !local.toString().isEmpty())
        return local.toString();
    const PlatformCentral* central = platform();
    return central ? central->peripheralName(m_identifier) : QString();
}

int BluetoothPeripheral::state() const {
    const PlatformCentral* central = platform();
    return central ? central->peripheralState(m_identifier)
                   : PlatformCentral::PeripheralDisconnected;
}

bool BluetoothPeripheral::isConnected() const {
    return state() == PlatformCentral::PeripheralConnected;
}

void BluetoothPeripheral::setDeviceScanCount(unsigned count) {
    m_deviceScanCount = count;
    m_deviceTimeoutTimer.cancel();
    if (!m_centerManager)
        return;
    std::weak_ptr<BluetoothPeripheral> weak = weak_from_this();
    m_deviceTimeoutTimer = Scheduler::instance().after(
        BluetoothCenterManager::kLostDeviceTimeout, m_centerManager, [weak, this] {
            if (const PeripheralPtr self = weak.lock())
                m_centerManager->foundDeviceTimeout(self);
        });
}

void BluetoothPeripheral::connectDeviceWithCallback(ConnectCallback callback) {
    connectDeviceWithTimeOut(m_connectTimeOut, m_connectOpertion, std::move(callback));
}

void BluetoothPeripheral::connectDeviceWithTimeOut(int seconds, ConnectCallback callback) {
    connectDeviceWithTimeOut(seconds, m_connectOpertion, std::move(callback));
}

void BluetoothPeripheral::connectDeviceWithTimeOut(int seconds, const QVariantMap& options,
                                                   ConnectCallback callback) {
    m_connectTimeOut = seconds;
    m_connectOpertion = options;
    m_connectCallback = std::move(callback);
    PlatformCentral* central = platform();
    if (!central)
        return;
    // A fresh link replaces the old one; the old one's end is not a loss.
    if (isConnected())
        disconnectDevice();
    m_isConnecting = true;
    central->connectPeripheral(m_identifier, options);
    m_connectTimeoutTimer.cancel();
    // The pending check holds the wrapper: nobody else may until the platform answers.
    m_connectTimeoutTimer =
        Scheduler::instance().after(std::chrono::seconds(seconds), m_centerManager,
                                    [self = shared_from_this()] { self->checkConnectTimeout(); });
}

void BluetoothPeripheral::checkConnectTimeout() {
    if (!m_isConnecting)
        return;
    dealDeviceConnectWithError(
        BluetoothError{kConnectTimeoutCode, QString::fromLatin1(kConnectTimeoutText)},
        KindTimedOut);
    m_isConnecting = false;
    disconnectDevice();
}

void BluetoothPeripheral::reconnectDevice() {
    m_isReconnectDevice = true;
    connectDeviceWithTimeOut(m_connectTimeOut, m_connectOpertion, m_connectCallback);
}

void BluetoothPeripheral::disconnectDevice() {
    m_disconnectRequested = true;
    m_isConnecting = false;
    m_connectTimeoutTimer.cancel();
    if (PlatformCentral* central = platform())
        central->cancelPeripheralConnection(m_identifier);
}

void BluetoothPeripheral::finishConnecting() {
    m_isConnecting = false;
    m_connectTimeoutTimer.cancel();
}

void BluetoothPeripheral::dealDeviceConnectWithError(const OptionalError& error, int kind) {
    // Keep ourselves and the callback alive while the callback runs: it may reconnect.
    const PeripheralPtr self = shared_from_this();
    const ConnectCallback callback = m_connectCallback;
    if (callback)
        callback(self, error, kind);
}

void BluetoothPeripheral::didConnect() {
    finishConnecting();
    m_disconnectRequested = false;
    dealDeviceConnectWithError(std::nullopt, KindConnected);
}

void BluetoothPeripheral::didFailToConnect(const BluetoothError& error) {
    finishConnecting();
    dealDeviceConnectWithError(error, KindFailed);
}

void BluetoothPeripheral::didDisconnect(const OptionalError& error) {
    resetServices();
    dealDeviceConnectWithError(error, KindDisconnected);
}

void BluetoothPeripheral::resetServices() {
    for (const ServicePtr& service : std::as_const(m_serviceArray))
        service->reset();
    // Searches still waiting for the radio end empty-handed: the link they asked about is gone.
    auto waiting = std::exchange(m_findServiceCallbackArray, {});
    for (const ServicesCallback& callback : waiting)
        callback({}, std::nullopt);
}

void BluetoothPeripheral::discoverAllDeviceServiceWithCallback(ServicesCallback callback) {
    discoverDeviceServiceWithUUIDArray({}, std::move(callback));
}

void BluetoothPeripheral::discoverDeviceServiceWithUUIDArray(const QStringList& uuids,
                                                             ServicesCallback callback) {
    const bool allKnown =
        !uuids.isEmpty() && std::all_of(uuids.begin(), uuids.end(), [&](const QString& uuid) {
            const ServicePtr service = searchServiceWithService(uuid);
            return service && service->isOn();
        });
    if (allKnown && isConnected()) {
        callback(m_serviceArray, std::nullopt);
        return;
    }
    PlatformCentral* central = platform();
    if (!central)
        return;
    m_findServiceCallbackArray.push_back(std::move(callback));
    central->discoverServices(m_identifier, uuids);
}

ServicePtr BluetoothPeripheral::searchServiceWithService(const QString& uuid) const {
    return BluetoothUuid::findIn(m_serviceArray, uuid);
}

void BluetoothPeripheral::didDiscoverServices(const OptionalError& error) {
    if (!error) {
        const PlatformCentral* central = platform();
        const QStringList uuids = central ? central->services(m_identifier) : QStringList{};
        for (const QString& uuid : uuids) {
            ServicePtr service = searchServiceWithService(uuid);
            if (!service) {
                service = std::make_shared<BluetoothService>(BluetoothUuid::normalized(uuid),
                                                             shared_from_this());
                m_serviceArray.append(service);
            }
            service->markOn();
        }
    }
    auto waiting = std::exchange(m_findServiceCallbackArray, {});
    for (const ServicesCallback& callback : waiting)
        callback(m_serviceArray, error);
}

void BluetoothPeripheral::didDiscoverCharacteristics(const QString& service,
                                                     const OptionalError& error) {
    if (const ServicePtr found = searchServiceWithService(service))
        found->didDiscoverCharacteristics(error);
}

CharacteristicPtr BluetoothPeripheral::characteristicAt(const GattPath& path) const {
    const ServicePtr service = searchServiceWithService(path.service);
    return service ? service->searchCharacteristciWithCharacteristic(path.characteristic) : nullptr;
}

void BluetoothPeripheral::didDiscoverDescriptors(const GattPath& path, const OptionalError& error) {
    if (const CharacteristicPtr characteristic = characteristicAt(path))
        characteristic->didDiscoverDescriptors(error);
}

void BluetoothPeripheral::didReadValue(const GattPath& path, const Bytes& value,
                                       const OptionalError& error) {
    if (const CharacteristicPtr characteristic = characteristicAt(path))
        characteristic->didReadValue(value, error);
}

void BluetoothPeripheral::didNotifyValue(const GattPath& path, const Bytes& value) {
    if (const CharacteristicPtr characteristic = characteristicAt(path))
        characteristic->didNotifyValue(value);
}

void BluetoothPeripheral::didFailToWrite(const GattPath& path, const BluetoothError& error) {
    if (const CharacteristicPtr characteristic = characteristicAt(path))
        characteristic->didFailToWrite(error);
}

void BluetoothPeripheral::didUpdateNotificationState(const GattPath& path, bool notifying,
                                                     const OptionalError& error) {
    if (const CharacteristicPtr characteristic = characteristicAt(path))
        characteristic->didUpdateNotificationState(notifying, error);
}

void BluetoothPeripheral::didReadDescriptor(const GattPath& path, const QString& descriptor,
                                            const Bytes& value, const OptionalError& error) {
    if (const CharacteristicPtr characteristic = characteristicAt(path)) {
        if (const DescriptorPtr found = characteristic->searchDescriptor(descriptor))
            found->didReadValue(value, error);
    }
}

void BluetoothPeripheral::didWriteDescriptor(const GattPath& path, const QString& descriptor,
                                             const OptionalError& error) {
    if (const CharacteristicPtr characteristic = characteristicAt(path)) {
        if (const DescriptorPtr found = characteristic->searchDescriptor(descriptor))
            found->didWriteValue(error);
    }
}

void BluetoothPeripheral::readDeviceRSSIWithCallback(RSSICallback callback) {
    PlatformCentral* central = platform();
    if (!central)
        return;
    m_readRSSICallbackArray.push_back(std::move(callback));
    central->readRSSI(m_identifier);
}

void BluetoothPeripheral::didReadRSSI(int rssi, const OptionalError& error) {
    if (!error)
        m_RSSI = rssi;
    auto waiting = std::exchange(m_readRSSICallbackArray, {});
    for (const RSSICallback& callback : waiting)
        callback(rssi, error);
}

void BluetoothPeripheral::notifyCharacteristic(const CharacteristicPtr& characteristic) {
    if (PlatformCentral* central = platform())
        central->setNotifyValue(characteristic->path(), true);
}

void BluetoothPeripheral::cancelNotifyCharacteristic(const CharacteristicPtr& characteristic) {
    if (PlatformCentral* central = platform())
        central->setNotifyValue(characteristic->path(), false);
}

} // namespace ostrel
