#include "BluetoothTool.h"

#include "LinkChannel.h"
#include "QtPlatformCentral.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "core/Scheduler.h"

#include <algorithm>

namespace ostrel {

namespace {

std::unique_ptr<BluetoothTool>& sharedTool() {
    static std::unique_ptr<BluetoothTool> tool;
    return tool;
}

} // namespace

BluetoothTool::BluetoothTool(PlatformCentral* central, QObject* parent)
    : QObject(parent), m_central(central) {
    if (central && !central->parent())
        central->setParent(this);
}

BluetoothTool::~BluetoothTool() = default;

BluetoothTool& BluetoothTool::shareInstance() {
    std::unique_ptr<BluetoothTool>& tool = sharedTool();
    if (!tool)
        tool = std::make_unique<BluetoothTool>(new QtPlatformCentral);
    return *tool;
}

std::unique_ptr<BluetoothTool>
BluetoothTool::replaceShareInstance(std::unique_ptr<BluetoothTool> tool) {
    return std::exchange(sharedTool(), std::move(tool));
}

BluetoothCenterManager& BluetoothTool::centerManager() {
    if (!m_centerManager) {
        m_centerManager =
            std::make_unique<BluetoothCenterManager>(m_central, m_managerOptions.managerDictionary);
        // Both ways, so that a screen scanning for desks learns at once when the radio goes.
        m_centerManager->setStateChangeCallback([this](BluetoothCenterManager*, int state) {
            setBluetoothState(
                state == PlatformCentral::StatePoweredOn ? StatePoweredOn : StateRadioOff, nullptr);
        });
    }
    return *m_centerManager;
}

void BluetoothTool::setBluetoothState(int state, const PeripheralPtr& peripheral) {
    m_bluetoothState = state;
    if (m_bluetoothStateChanged)
        m_bluetoothStateChanged(peripheral, state);
}

BluetoothTool::ScanCondition BluetoothTool::conditionOf(const QString& name) {
    return name.isNull() ? ScanCondition{} : ScanCondition{name};
}

BluetoothTool::ScanCondition BluetoothTool::conditionOf(Rule rule) {
    return rule ? ScanCondition{std::move(rule)} : ScanCondition{};
}

int BluetoothTool::settleTimeOut(int& seconds) {
    if (seconds == BluetoothToolOptions::kUnsetTimeOut)
        seconds = kDefaultTimeOut;
    return seconds;
}

// ---- Scanning ----

void BluetoothTool::startScan(BluetoothCenterManager::ScanCallback handler) {
    const int seconds = settleTimeOut(m_managerOptions.scanTimeOut);
    centerManager().scanDeviceWithTimeInterval(seconds, m_managerOptions.scanServiceArray,
                                               m_managerOptions.scanOptions, std::move(handler));
}

BluetoothError BluetoothTool::scanEndError() const {
    return m_centerManager && m_centerManager->blueToothIsOpen()
               ? BluetoothError::of(ErrorNotFound, kTextNotFound)
               : BluetoothError::of(ErrorPoweredOff, kTextPoweredOff);
}

bool BluetoothTool::meetsCondition(const ScanCondition& condition, const PeripheralPtr& peripheral,
                                   int flags) {
    if (!peripheral)
        return false;
    if (const QString* name = std::get_if<QString>(&condition)) {
        return (flags == BluetoothCenterManager::FlagFirstSighting ||
                flags == BluetoothCenterManager::FlagRefreshed) &&
               peripheral->name() == *name;
    }
    if (const Rule* rule = std::get_if<Rule>(&condition))
        return flags == BluetoothCenterManager::FlagFirstSighting && *rule && (*rule)(peripheral);
    return false;
}

void BluetoothTool::scanDeviceWithCondition(const ScanCondition& condition,
                                            PeripheralCallback callback) {
    if (std::holds_alternative<std::monostate>(condition)) {
        callback(nullptr, BluetoothError::of(ErrorNotFound, kTextConditionNil));
        return;
    }
    if (centerManager().blueToothIsOpen())
        setBluetoothState(StatePoweredOn, nullptr);
    else
        callback(nullptr, BluetoothError::of(ErrorPoweredOffWaiting, kTextPoweredOffWaiting));
    auto done = std::make_shared<bool>(false);
    startScan([this, condition, callback, done](const PeripheralPtr& peripheral, int flags) {
        if (*done)
            return;
        if (flags == BluetoothCenterManager::FlagScanEnded) {
            *done = true;
            stopScanDevice();
            callback(nullptr, scanEndError());
        } else if (meetsCondition(condition, peripheral, flags)) {
            *done = true;
            stopScanDevice();
            setBluetoothState(StateFound, peripheral);
            callback(peripheral, std::nullopt);
        }
    });
}

void BluetoothTool::scanDeviceWithName(const QString& name, PeripheralCallback callback) {
    scanDeviceWithCondition(conditionOf(name), std::move(callback));
}

void BluetoothTool::scanDeviceWithRule(Rule rule, PeripheralCallback callback) {
    scanDeviceWithCondition(conditionOf(std::move(rule)), std::move(callback));
}

void BluetoothTool::scanAllDeviceAsyncWithRule(Rule rule, ScanEventCallback callback) {
    startScan([this, rule, callback](const PeripheralPtr& peripheral, int flags) {
        if (flags == BluetoothCenterManager::FlagScanEnded) {
            stopScanDevice();
            OptionalError ended;
            if (!centerManager().blueToothIsOpen())
                ended = BluetoothError::of(ErrorPoweredOff, kTextPoweredOff);
            callback(nullptr, flags, ended);
            return;
        }
        if (!rule || !rule(peripheral))
            return;
        if (flags == BluetoothCenterManager::FlagFirstSighting)
            setBluetoothState(StateFound, peripheral);
        callback(peripheral, flags, std::nullopt);
    });
}

void BluetoothTool::scanAllDeviceWithCondition(const ScanCondition& condition,
                                               ListCallback callback) {
    if (std::holds_alternative<std::monostate>(condition)) {
        callback({}, BluetoothError::of(ErrorNotFound, kTextConditionNil));
        return;
    }
    auto found = std::make_shared<QList<PeripheralPtr>>();
    found->reserve(5);
    startScan([this, condition, callback, found](const PeripheralPtr& peripheral, int flags) {
        if (flags == BluetoothCenterManager::FlagScanEnded) {
            stopScanDevice();
            OptionalError ended;
            if (!centerManager().blueToothIsOpen() || found->isEmpty())
                ended = scanEndError();
            callback(*found, ended);
        } else if (meetsCondition(condition, peripheral, flags) &&
                   !isExitObject(peripheral, *found)) {
            found->append(peripheral);
        }
    });
}

void BluetoothTool::scanAllDeviceWithName(const QString& name, ListCallback callback) {
    scanAllDeviceWithCondition(conditionOf(name), std::move(callback));
}

void BluetoothTool::scanAllDeviceWithRule(Rule rule, ListCallback callback) {
    scanAllDeviceWithCondition(conditionOf(std::move(rule)), std::move(callback));
}

bool BluetoothTool::isExitObject(const PeripheralPtr& peripheral,
                                 const QList<PeripheralPtr>& list) {
    return peripheral && std::any_of(list.begin(), list.end(), [&](const PeripheralPtr& item) {
               return item && item->identifier() == peripheral->identifier();
           });
}

void BluetoothTool::startScanDevice() {
    centerManager().startScanDevice();
}

void BluetoothTool::stopScanDevice() {
    centerManager().stopScanDevice();
}

// ---- Connecting ----

void BluetoothTool::connectDeviceWithPeripheral(const PeripheralPtr& peripheral,
                                                PeripheralCallback callback) {
    if (!peripheral)
        return;
    if (centerManager().searchDeviceWithPeripheral(peripheral->identifierString())) {
        setBluetoothState(StateConnected, peripheral);
        callback(peripheral, std::nullopt);
        return;
    }
    peripheral->connectDeviceWithTimeOut(
        settleTimeOut(m_managerOptions.connectTimeOut), m_managerOptions.connectOptions,
        [this, callback](const PeripheralPtr& reported, const OptionalError& failure, int kind) {
            handleConnectReport(reported, failure, kind, callback);
        });
}

void BluetoothTool::handleConnectReport(const PeripheralPtr& peripheral,
                                        const OptionalError& failure, int kind,
                                        const PeripheralCallback& callback) {
    const QString domain = failure ? failure->domain : QString();
    switch (kind) {
    case BluetoothPeripheral::KindConnected:
        setBluetoothState(StateConnected, peripheral);
        callback(peripheral, std::nullopt);
        break;
    case BluetoothPeripheral::KindFailed:
    case BluetoothPeripheral::KindTimedOut:
        callback(peripheral,
                 failure ? OptionalError(failure->withCode(ErrorConnectFailed)) : std::nullopt);
        break;
    case BluetoothPeripheral::KindDisconnected:
        // A link this side closed on purpose is not a loss: it is not re-established.
        if (m_managerOptions.autoConnectAfterDisconnect && !peripheral->isDisconnectRequested()) {
            peripheral->reconnectDevice();
            callback(peripheral, BluetoothError{ErrorLinkLostReconnecting, domain});
        } else {
            callback(peripheral, BluetoothError{ErrorLinkLost, domain});
        }
        break;
    default:
        break;
    }
}

void BluetoothTool::scanAndConnectDeviceWithCondition(const ScanCondition& condition,
                                                      PeripheralCallback callback) {
    scanDeviceWithCondition(
        condition, [this, callback](const PeripheralPtr& peripheral, const OptionalError& failure) {
            if (failure)
                callback(peripheral, failure);
            else
                connectDeviceWithPeripheral(peripheral, callback);
        });
}

void BluetoothTool::scanAndConnectDeviceWithName(const QString& name, PeripheralCallback callback) {
    scanAndConnectDeviceWithCondition(conditionOf(name), std::move(callback));
}

void BluetoothTool::disconnectWithPeripheral(const PeripheralPtr& peripheral) {
    if (peripheral)
        peripheral->disconnectDevice();
}

void BluetoothTool::disconnectAllPeripheral() {
    centerManager().disConnectAllDevice();
}

// ---- GATT operations ----

void BluetoothTool::searchCharacteristicWithPeripheral(const PeripheralPtr& peripheral,
                                                       const QString& serviceUUID,
                                                       const QString& operationUUID,
                                                       CharacteristicCallback callback) {
    if (!peripheral || !peripheral->isConnected()) {
        callback(nullptr, BluetoothError::of(ErrorNotConnected, kTextNotConnected));
        return;
    }
    peripheral->discoverDeviceServiceWithUUIDArray(
        {serviceUUID}, [=, this](const QList<ServicePtr>&, const OptionalError& failure) {
            // An empty answer without an error: the link went away while we asked.
            if (!failure && !peripheral->isConnected())
                return callback(nullptr, std::nullopt);
            const ServicePtr service = peripheral->searchServiceWithService(serviceUUID);
            if (failure || !service)
                return callback(nullptr, failure
                                             ? failure->withCode(ErrorNoService)
                                             : BluetoothError::of(ErrorNoService, kTextNoService));
            setBluetoothState(StateServiceFound, peripheral);
            service->discoverCharacteristicWithCharacteristicUUIDs(
                {operationUUID},
                [=, this](const QList<CharacteristicPtr>&, const OptionalError& searchFailure) {
                    if (!searchFailure && !peripheral->isConnected())
                        return callback(nullptr, std::nullopt);
                    const CharacteristicPtr characteristic =
                        service->searchCharacteristciWithCharacteristic(operationUUID);
                    if (searchFailure || !characteristic)
                        return callback(
                            nullptr, searchFailure ? searchFailure->withCode(ErrorNoCharacteristic)
                                                   : BluetoothError::of(ErrorNoCharacteristic,
                                                                        kTextNoService));
                    setBluetoothState(StateCharacteristicFound, peripheral);
                    callback(characteristic, std::nullopt);
                });
        });
}

void BluetoothTool::writeDataWithPeripheral(const PeripheralPtr& peripheral,
                                            const QString& serviceUUID, const QString& writeUUID,
                                            const Bytes& data, CharacteristicCallback callback) {
    searchCharacteristicWithPeripheral(
        peripheral, serviceUUID, writeUUID,
        [=, this](const CharacteristicPtr& characteristic, const OptionalError& failure) {
            if (failure) {
                if (callback)
                    callback(nullptr, failure);
                return;
            }
            if (!characteristic) {
                // The session rebuilds the link when a write finds nothing to go to.
                NotificationCenter::defaultCenter().post(
                    QString::fromLatin1(notifications::kReconnect));
                return;
            }
            characteristic->writeValueWithData(
                data, [=, this](const CharacteristicPtr& written, const OptionalError& result) {
                    if (!result)
                        setBluetoothState(StateWritten, peripheral);
                    if (callback)
                        callback(written, result ? OptionalError(result->withCode(ErrorWrite))
                                                 : std::nullopt);
                });
        });
}

void BluetoothTool::notifyDataWithPeripheral(const PeripheralPtr& peripheral,
                                             const QString& serviceUUID, const QString& notifyUUID,
                                             bool notifyValue, DataCallback callback) {
    searchCharacteristicWithPeripheral(
        peripheral, serviceUUID, notifyUUID,
        [=, this](const CharacteristicPtr& characteristic, const OptionalError& failure) {
            if (failure)
                return callback(std::nullopt, failure);
            if (!characteristic)
                return;
            m_bluethoothData.clear();
            // The subscription lives inside the peripheral: hold it weakly.
            std::weak_ptr<BluetoothPeripheral> weak = peripheral;
            characteristic->notifyWithValue(
                notifyValue, [this, weak, callback](const CharacteristicPtr&, const Bytes& value,
                                                    const OptionalError& result) {
                    const OptionalError mapped =
                        result ? OptionalError(result->withCode(ErrorNotify)) : std::nullopt;
                    if (!result)
                        setBluetoothState(StateNotified, weak.lock());
                    m_bluethoothData.deliver(value, mapped, callback);
                });
        });
}

void BluetoothTool::openChannelWithPeripheral(const PeripheralPtr& peripheral,
                                              const QString& serviceUUID, const QString& notifyUUID,
                                              const QString& writeUUID, DataCallback callback) {
    searchCharacteristicWithPeripheral(
        peripheral, serviceUUID, writeUUID,
        [=, this](const CharacteristicPtr& write, const OptionalError& failure) {
            if (failure)
                return callback(std::nullopt, failure);
            if (!write)
                return;
            searchCharacteristicWithPeripheral(
                peripheral, serviceUUID, notifyUUID,
                [=, this](const CharacteristicPtr& notify, const OptionalError& notifyFailure) {
                    if (notifyFailure)
                        return callback(std::nullopt, notifyFailure);
                    if (notify && m_central)
                        openChannel(write, notify, callback);
                });
        });
}

void BluetoothTool::openChannel(const CharacteristicPtr& write, const CharacteristicPtr& notify,
                                const DataCallback& callback) {
    auto channel = std::make_shared<LinkChannel>(m_central->channelWriter(write->path()), callback);
    m_central->setNotifySink(notify->path(), channel);
    // The values take the channel's way; only a failed subscription comes this way.
    notify->notifyWithValue(
        true, [channel](const CharacteristicPtr&, const Bytes&, const OptionalError& failure) {
            if (failure)
                channel->failed(failure->withCode(ErrorNotify));
        });
}

} // namespace ostrel
