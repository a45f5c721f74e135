#include "BluetoothCenterManager.h"

#include "BluetoothToolOptions.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "core/Scheduler.h"

#include <cmath>

namespace ostrel {

namespace {

BluetoothCenterManager::AlertHandler& alertHandler() {
    static BluetoothCenterManager::AlertHandler handler;
    return handler;
}

Scheduler::Duration secondsToDuration(double seconds) {
    return Scheduler::Duration(static_cast<Scheduler::Duration::rep>(std::llround(seconds * 1000)));
}

} // namespace

BluetoothCenterManager::BluetoothCenterManager(PlatformCentral* central, const QVariantMap& options,
                                               QObject* parent)
    : QObject(parent), m_manager(central), m_options(options) {
    m_manager->setDelegate(this);
    m_blueToothIsOpen = m_manager->state() == PlatformCentral::StatePoweredOn;
    // The power state the platform already knows is reported as a first change, after the
    // creator had the chance to install its state-change callback.
    Scheduler::instance().after(Scheduler::Duration::zero(), this, [this] {
        if (m_manager)
            centralDidUpdateState(m_manager->state());
    });
}

BluetoothCenterManager::~BluetoothCenterManager() {
    if (m_manager)
        m_manager->setDelegate(nullptr);
}

void BluetoothCenterManager::setAlertHandler(AlertHandler handler) {
    alertHandler() = std::move(handler);
}

void BluetoothCenterManager::centralDidUpdateState(int state) {
    m_blueToothIsOpen = state == PlatformCentral::StatePoweredOn;
    const bool changed = state != m_centerState;
    m_centerState = state;
    if (changed && m_stateChangeCallback)
        m_stateChangeCallback(this, state);
    if (state == PlatformCentral::StateUnsupported)
        showAlert(tr("This device does not support BLE4.0, please replace the device"));
    else if (changed && state == PlatformCentral::StatePoweredOff && showsPowerAlert())
        showAlert(tr("Bluetooth is turned off, please turn it on to connect to your desk"));
}

bool BluetoothCenterManager::showsPowerAlert() const {
    return m_options.value(QString::fromLatin1(BluetoothToolOptions::kShowPowerAlertKey)).toBool();
}

void BluetoothCenterManager::showAlert(const QString& text) {
    if (alertHandler())
        alertHandler()(tr("Prompt"), text, tr("Confirm"));
}

void BluetoothCenterManager::scanDeviceWithTimeInterval(double seconds, const QStringList& services,
                                                        const QVariantMap& options,
                                                        ScanCallback callback) {
    m_scanTimeInterval = seconds;
    m_scanServicesArray = services;
    m_scanOptionsDictionary = options;
    m_blueToothSearchDeviceCallback = std::move(callback);
    stopScanDevice();
    // A previous scan's end must not cut this one short.
    m_scanBlock.cancel();
    m_isScanning = true;
    for (const PeripheralPtr& connected : retrieveConnectedPeripheralsWithServices(services)) {
        if (!m_foundDeviceDict.contains(connected->identifierString()))
            m_foundDeviceDict.insert(connected->identifierString(), connected);
    }
    startScanDevice();
    m_scanBlock =
        Scheduler::instance().after(secondsToDuration(seconds), this, [this] { scanTimeEnded(); });
}

void BluetoothCenterManager::scanDeviceWithTimeInterval(double seconds, ScanCallback callback) {
    scanDeviceWithTimeInterval(seconds, {}, {}, std::move(callback));
}

void BluetoothCenterManager::scanDeviceWithTimeCallback(ScanCallback callback) {
    scanDeviceWithTimeInterval(kDefaultScanTimeInterval, std::move(callback));
}

void BluetoothCenterManager::scanConnectDeviceWithTimeInterval(double seconds,
                                                               const QStringList& services,
                                                               const QVariantMap& options,
                                                               ScanCallback callback) {
    scanDeviceWithTimeInterval(seconds, services, options, std::move(callback));
}

void BluetoothCenterManager::scanTimeEnded() {
    m_isScanning = false;
    if (m_manager && m_manager->isScanning() && m_blueToothSearchDeviceCallback) {
        m_manager->stopScan();
        m_blueToothSearchDeviceCallback(nullptr, FlagScanEnded);
    }
    for (const PeripheralPtr& peripheral : std::as_const(m_foundDeviceDict))
        peripheral->cancelDeviceTimeoutTimer();
}

void BluetoothCenterManager::startScanDevice() {
    if (m_manager)
        m_manager->scanForPeripherals(m_scanServicesArray, m_scanOptionsDictionary);
}

void BluetoothCenterManager::stopScanDevice() {
    if (m_manager)
        m_manager->stopScan();
}

void BluetoothCenterManager::removeAllScanFoundDevice() {
    for (const PeripheralPtr& peripheral : std::as_const(m_foundDeviceDict))
        peripheral->cancelDeviceTimeoutTimer();
    m_foundDeviceDict.clear();
}

void BluetoothCenterManager::disConnectAllDevice() {
    // disconnectDevice may change the dictionary through platform events: work on a copy.
    const QList<PeripheralPtr> connected = m_connectedDeviceDict.values();
    for (const PeripheralPtr& peripheral : connected)
        peripheral->disconnectDevice();
}

PeripheralPtr BluetoothCenterManager::searchDeviceWithPeripheral(const QString& identifier) const {
    return m_connectedDeviceDict.value(identifier);
}

QList<PeripheralPtr>
BluetoothCenterManager::retrieveConnectedPeripheralsWithServices(const QStringList& services) {
    QList<PeripheralPtr> result;
    if (!m_manager)
        return result;
    for (const QString& identifier : m_manager->retrieveConnectedPeripherals(services))
        result.append(peripheralFor(identifier));
    return result;
}

QList<PeripheralPtr>
BluetoothCenterManager::retrievePeripheralsWithIdentifiers(const QStringList& identifiers) {
    QList<PeripheralPtr> result;
    if (!m_manager)
        return result;
    for (const QString& identifier : identifiers) {
        if (m_manager->isKnownPeripheral(identifier))
            result.append(peripheralFor(identifier));
    }
    return result;
}

PeripheralPtr BluetoothCenterManager::liveWrapper(const QString& identifier) const {
    return m_wrappers.value(identifier).lock();
}

PeripheralPtr BluetoothCenterManager::peripheralFor(const QString& identifier) {
    if (PeripheralPtr existing = liveWrapper(identifier))
        return existing;
    PeripheralPtr created = BluetoothPeripheral::initWithPeripheral(identifier, this);
    m_wrappers.insert(identifier, created);
    return created;
}

void BluetoothCenterManager::centralDidDiscoverPeripheral(const QString& identifier,
                                                          const QVariantMap& advertisementData,
                                                          int rssi) {
    if (const PeripheralPtr known = m_foundDeviceDict.value(identifier)) {
        const unsigned count = known->deviceScanCount() + 1;
        known->setDeviceScanCount(count);
        // Only every tenth repeat is reported, so a busy air does not flood the screens.
        if (count % kRepeatReportInterval != 0)
            return;
        known->setRSSI(rssi);
        known->setDeviceScanCount(0);
        known->setAdvertisementData(advertisementData);
        if (m_blueToothSearchDeviceCallback)
            m_blueToothSearchDeviceCallback(known, FlagRefreshed);
        return;
    }
    const PeripheralPtr peripheral = peripheralFor(identifier);
    peripheral->setRSSI(rssi);
    peripheral->setAdvertisementData(advertisementData);
    // Starting the count also starts the lost-device timer, so a desk seen once and never
    // again is dropped too.
    peripheral->setDeviceScanCount(0);
    m_foundDeviceDict.insert(identifier, peripheral);
    if (m_blueToothSearchDeviceCallback)
        m_blueToothSearchDeviceCallback(peripheral, FlagFirstSighting);
}

void BluetoothCenterManager::foundDeviceTimeout(const PeripheralPtr& peripheral) {
    m_foundDeviceDict.remove(peripheral->identifierString());
    if (m_blueToothSearchDeviceCallback)
        m_blueToothSearchDeviceCallback(peripheral, FlagLost);
}

void BluetoothCenterManager::centralDidConnectPeripheral(const QString& identifier) {
    NotificationCenter::defaultCenter().post(
        QString::fromLatin1(notifications::kBluetoothConnected));
    const PeripheralPtr peripheral = liveWrapper(identifier);
    if (!peripheral)
        return;
    m_connectedDeviceDict.insert(identifier, peripheral);
    peripheral->didConnect();
}

void BluetoothCenterManager::centralDidFailToConnectPeripheral(const QString& identifier,
                                                               const BluetoothError& error) {
    if (const PeripheralPtr peripheral = liveWrapper(identifier))
        peripheral->didFailToConnect(error);
}

void BluetoothCenterManager::centralDidDisconnectPeripheral(const QString& identifier,
                                                            const OptionalError& error) {
    NotificationCenter::defaultCenter().post(
        QString::fromLatin1(notifications::kBluetoothDisconnected));
    const PeripheralPtr peripheral = m_connectedDeviceDict.value(identifier);
    if (!peripheral)
        return;
    m_connectedDeviceDict.remove(identifier);
    m_foundDeviceDict.remove(identifier);
    peripheral->cancelDeviceTimeoutTimer();
    if (m_blueToothSearchDeviceCallback)
        m_blueToothSearchDeviceCallback(peripheral, FlagDisconnected);
    peripheral->didDisconnect(error);
}

void BluetoothCenterManager::peripheralDidDiscoverServices(const QString& identifier,
                                                           const OptionalError& error) {
    if (const PeripheralPtr peripheral = liveWrapper(identifier))
        peripheral->didDiscoverServices(error);
}

void BluetoothCenterManager::peripheralDidDiscoverCharacteristics(const QString& identifier,
                                                                  const QString& service,
                                                                  const OptionalError& error) {
    if (const PeripheralPtr peripheral = liveWrapper(identifier))
        peripheral->didDiscoverCharacteristics(service, error);
}

void BluetoothCenterManager::peripheralDidDiscoverDescriptors(const GattPath& path,
                                                              const OptionalError& error) {
    if (const PeripheralPtr peripheral = liveWrapper(path.peripheral))
        peripheral->didDiscoverDescriptors(path, error);
}

void BluetoothCenterManager::peripheralDidReadValue(const GattPath& path, const Bytes& value,
                                                    const OptionalError& error) {
    if (const PeripheralPtr peripheral = liveWrapper(path.peripheral))
        peripheral->didReadValue(path, value, error);
}

void BluetoothCenterManager::peripheralDidNotifyValue(const GattPath& path, const Bytes& value) {
    if (const PeripheralPtr peripheral = liveWrapper(path.peripheral))
        peripheral->didNotifyValue(path, value);
}

void BluetoothCenterManager::peripheralDidFailToWrite(const GattPath& path,
                                                      const BluetoothError& error) {
    if (const PeripheralPtr peripheral = liveWrapper(path.peripheral))
        peripheral->didFailToWrite(path, error);
}

void BluetoothCenterManager::peripheralDidUpdateNotificationState(const GattPath& path,
                                                                  bool notifying,
                                                                  const OptionalError& error) {
    if (const PeripheralPtr peripheral = liveWrapper(path.peripheral))
        peripheral->didUpdateNotificationState(path, notifying, error);
}

void BluetoothCenterManager::peripheralDidReadDescriptor(const GattPath& path,
                                                         const QString& descriptor,
                                                         const Bytes& value,
                                                         const OptionalError& error) {
    if (const PeripheralPtr peripheral = liveWrapper(path.peripheral))
        peripheral->didReadDescriptor(path, descriptor, value, error);
}

void BluetoothCenterManager::peripheralDidWriteDescriptor(const GattPath& path,
                                                          const QString& descriptor,
                                                          const OptionalError& error) {
    if (const PeripheralPtr peripheral = liveWrapper(path.peripheral))
        peripheral->didWriteDescriptor(path, descriptor, error);
}

void BluetoothCenterManager::peripheralDidReadRSSI(const QString& identifier, int rssi,
                                                   const OptionalError& error) {
    if (const PeripheralPtr peripheral = liveWrapper(identifier))
        peripheral->didReadRSSI(rssi, error);
}

} // namespace ostrel
