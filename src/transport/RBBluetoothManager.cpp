#include "RBBluetoothManager.h"

#include "BluetoothFilter.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "protocol/BluetoothResultHandle.h"

namespace ostrel {

namespace {

std::unique_ptr<RBBluetoothManager>& sharedManager() {
    static std::unique_ptr<RBBluetoothManager> manager;
    return manager;
}

} // namespace

RBBluetoothManager::RBBluetoothManager(QObject* parent) : QObject(parent) {
    NotificationCenter& center = NotificationCenter::defaultCenter();
    center.addObserver(this, QString::fromLatin1(notifications::kBluetoothConnected),
                       [this](const QVariant&) { m_isConnect = true; });
    center.addObserver(this, QString::fromLatin1(notifications::kBluetoothDisconnected),
                       [this](const QVariant&) { m_isConnect = false; });
}

RBBluetoothManager::~RBBluetoothManager() {
    NotificationCenter::defaultCenter().removeObserver(this);
}

RBBluetoothManager& RBBluetoothManager::sharedInstance() {
    std::unique_ptr<RBBluetoothManager>& manager = sharedManager();
    if (!manager)
        manager = std::make_unique<RBBluetoothManager>();
    return *manager;
}

std::unique_ptr<RBBluetoothManager>
RBBluetoothManager::replaceSharedInstance(std::unique_ptr<RBBluetoothManager> manager) {
    return std::exchange(sharedManager(), std::move(manager));
}

const BluetoothToolOptions& RBBluetoothManager::toolOptions() {
    if (!m_toolOptions) {
        m_toolOptions.emplace(
            QString::fromLatin1(kManagerQueueLabel),
            QVariantMap{{QString::fromLatin1(BluetoothToolOptions::kShowPowerAlertKey), true}});
        m_toolOptions->scanTimeOut = kDefaultTimeOut;
        m_toolOptions->connectTimeOut = kDefaultTimeOut;
        m_toolOptions->autoConnectAfterDisconnect = true;
    }
    return *m_toolOptions;
}

BluetoothTool& RBBluetoothManager::bluetoothTool() {
    if (!m_bluetoothTool) {
        m_bluetoothTool = &BluetoothTool::shareInstance();
        m_bluetoothTool->setManagerOptions(toolOptions());
    }
    return *m_bluetoothTool;
}

bool RBBluetoothManager::blueToothIsOpen() {
    return bluetoothTool().centerManager().blueToothIsOpen();
}

void RBBluetoothManager::bluetoothStateChanged(StateCallback callback) {
    bluetoothTool().setBluetoothStateChanged(std::move(callback));
}

void RBBluetoothManager::setScanTimeOut(int seconds) {
    toolOptions();
    m_toolOptions->scanTimeOut = seconds;
    bluetoothTool().setManagerOptions(*m_toolOptions);
}

void RBBluetoothManager::setConnectTimeOut(int seconds) {
    toolOptions();
    m_toolOptions->connectTimeOut = seconds;
    bluetoothTool().setManagerOptions(*m_toolOptions);
}

void RBBluetoothManager::setAutoConnectAfterDisconnect(bool enabled) {
    toolOptions();
    m_toolOptions->autoConnectAfterDisconnect = enabled;
    bluetoothTool().setManagerOptions(*m_toolOptions);
}

// ---- Scanning ----

namespace {

BluetoothTool::Rule scanFilter(BluetoothType type) {
    return [type](const PeripheralPtr& peripheral) {
        if (!peripheral)
            return false;
        const QString name = peripheral->name();
        return !name.isEmpty() && BluetoothFilter::scanRuleWithType(type, name);
    };
}

} // namespace

void RBBluetoothManager::scanWithType(BluetoothType type, ScanCallback callback) {
    bluetoothTool().scanAllDeviceAsyncWithRule(scanFilter(type), std::move(callback));
}

void RBBluetoothManager::scanAllWithType(BluetoothType type, ScanAllCallback callback) {
    bluetoothTool().scanAllDeviceWithRule(scanFilter(type), std::move(callback));
}

void RBBluetoothManager::stopScanDevice() {
    bluetoothTool().stopScanDevice();
}

// ---- Connecting ----

RBBluetoothManager::ConnectCallback
RBBluetoothManager::reportingTo(ConnectCallback connectCallback, FrameCallback operationCallback) {
    QPointer<RBBluetoothManager> self(this);
    return [self, connectCallback, operationCallback](const PeripheralPtr& peripheral,
                                                      const OptionalError& error) {
        if (connectCallback)
            connectCallback(peripheral, error);
        if (!self)
            return;
        // Kept even after a failure: callers rely on it naming the desk they last tried.
        self->m_currentPeripheral = peripheral;
        if (!error && operationCallback)
            self->setNotifyDataWithPeripheral(peripheral, operationCallback);
    };
}

void RBBluetoothManager::connectDeviceWithPeripheral(const PeripheralPtr& peripheral,
                                                     ConnectCallback connectCallback) {
    bluetoothTool().connectDeviceWithPeripheral(peripheral,
                                                reportingTo(std::move(connectCallback), nullptr));
}

void RBBluetoothManager::connectDeviceWithPeripheral(const PeripheralPtr& peripheral,
                                                     ConnectCallback connectCallback,
                                                     FrameCallback operationCallback) {
    bluetoothTool().connectDeviceWithPeripheral(
        peripheral, reportingTo(std::move(connectCallback), std::move(operationCallback)));
}

void RBBluetoothManager::connectDeviceWithPeripheralName(const QString& name,
                                                         ConnectCallback connectCallback,
                                                         FrameCallback operationCallback) {
    bluetoothTool().scanAndConnectDeviceWithName(
        name, reportingTo(std::move(connectCallback), std::move(operationCallback)));
}

// ---- Frames and writes ----

BluetoothModel RBBluetoothManager::modelFor(const PeripheralPtr& peripheral) {
    const QString name = peripheral ? peripheral->name() : QString();
    return BluetoothModel(BluetoothFilter::getBluetoothTypeWithPeriperalName(name));
}

void RBBluetoothManager::setNotifyDataWithPeripheral(const PeripheralPtr& peripheral,
                                                     FrameCallback operationCallback) {
    // The desk's type, once for the link; it is done again for the next one.
    const BluetoothModel model = modelFor(peripheral);
    // Families without identifiers exchange no frames.
    if (model.serviceUUID().isEmpty() && model.readCharacteristicUUID().isEmpty())
        return;
    bluetoothTool().openChannelWithPeripheral(
        peripheral, model.serviceUUID(), model.readCharacteristicUUID(),
        model.writeCharacteristicUUID(), std::move(operationCallback));
}

void RBBluetoothManager::writeData(const Bytes& data, const PeripheralPtr& peripheral,
                                   WriteCallback callback) {
    const BluetoothModel model = modelFor(peripheral);
    if (model.serviceUUID().isEmpty() && model.writeCharacteristicUUID().isEmpty())
        return;
    bluetoothTool().writeDataWithPeripheral(peripheral, model.serviceUUID(),
                                            model.writeCharacteristicUUID(), data,
                                            std::move(callback));
}

void RBBluetoothManager::writeDataWithCurrentperipheral(const Bytes& data, WriteCallback callback) {
    writeData(data, m_currentPeripheral, std::move(callback));
}

// ---- Teardown ----

void RBBluetoothManager::disconnectWithPeripheral(const PeripheralPtr& peripheral) {
    bluetoothTool().disconnectWithPeripheral(peripheral);
}

void RBBluetoothManager::disconnectAllPeripheral() {
    bluetoothTool().disconnectAllPeripheral();
}

void RBBluetoothManager::resetManager() {
    disconnectAllPeripheral();
    bluetoothTool().centerManager().removeAllScanFoundDevice();
    stopScanDevice();
}

void RBBluetoothManager::resetScanManager() {
    bluetoothTool().centerManager().removeAllScanFoundDevice();
    stopScanDevice();
}

} // namespace ostrel
