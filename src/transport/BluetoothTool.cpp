#include "BluetoothTool.h"

#include "BluetoothUuid.h"
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

BluetoothError error(int code, const char* text) {
    return BluetoothError{code, QString::fromLatin1(text)};
}

// A null name or an empty rule is no condition at all.
BluetoothTool::ScanCondition conditionOf(const QString& name) {
    return name.isNull() ? BluetoothTool::ScanCondition{} : BluetoothTool::ScanCondition{name};
}

BluetoothTool::ScanCondition conditionOf(BluetoothTool::Rule rule) {
    return rule ? BluetoothTool::ScanCondition{std::move(rule)} : BluetoothTool::ScanCondition{};
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
        m_centerManager->setStateChangeCallback([this](BluetoothCenterManager*, int state) {
            if (state == PlatformCentral::StatePoweredOn)
                setBluetoothState(StatePoweredOn, nullptr);
        });
    }
    return *m_centerManager;
}

void BluetoothTool::setBluetoothState(int state, const PeripheralPtr& peripheral) {
    m_bluetoothState = state;
    if (m_bluetoothStateChanged)
        m_bluetoothStateChanged(peripheral, state);
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
               ? error(ErrorNotFound, kTextNotFound)
               : error(ErrorPoweredOff, kTextPoweredOff);
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
        callback(nullptr, error(ErrorNotFound, kTextConditionNil));
        return;
    }
    if (centerManager().blueToothIsOpen())
        setBluetoothState(StatePoweredOn, nullptr);
    else
        callback(nullptr, error(ErrorPoweredOffWaiting, kTextPoweredOffWaiting));
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
                ended = error(ErrorPoweredOff, kTextPoweredOff);
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
        callback({}, error(ErrorNotFound, kTextConditionNil));
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

void BluetoothTool::scanThenConnect(const ScanCondition& condition, PeripheralCallback callback) {
    scanDeviceWithCondition(
        condition, [this, callback](const PeripheralPtr& peripheral, const OptionalError& failure) {
            if (failure)
                callback(peripheral, failure);
            else
                connectDeviceWithPeripheral(peripheral, callback);
        });
}

void BluetoothTool::scanAndConnectDeviceWithName(const QString& name, PeripheralCallback callback) {
    scanThenConnect(conditionOf(name), std::move(callback));
}

void BluetoothTool::scanAndConnectDeviceWithRule(Rule rule, PeripheralCallback callback) {
    scanThenConnect(conditionOf(std::move(rule)), std::move(callback));
}

void BluetoothTool::scanAndConnectDeviceWithIdentifier(const QString& identifier,
                                                       PeripheralCallback callback) {
    scanAndConnectDeviceWithRule(
        [identifier](const PeripheralPtr& peripheral) {
            return peripheral->identifierString() == identifier;
        },
        std::move(callback));
}

void BluetoothTool::connectDeviceWithIdentifier(const QString& identifier,
                                                PeripheralCallback callback) {
    if (identifier.isEmpty()) {
        callback(nullptr, error(ErrorIdentifier, kTextIdentifierEmpty));
        return;
    }
    if (!BluetoothUuid::isValidIdentifier(identifier)) {
        callback(nullptr, error(ErrorIdentifier, kTextIdentifierInvalid));
        return;
    }
    BluetoothCenterManager& manager = centerManager();
    PeripheralPtr known = manager.searchDeviceWithPeripheral(identifier);
    if (!known)
        known = manager.foundDeviceDict().value(identifier);
    if (!known) {
        const QList<PeripheralPtr> retrieved =
            manager.retrievePeripheralsWithIdentifiers({identifier});
        known = retrieved.isEmpty() ? nullptr : retrieved.first();
    }
    if (known)
        connectDeviceWithPeripheral(known, std::move(callback));
    else
        scanAndConnectDeviceWithIdentifier(identifier, std::move(callback));
}

void BluetoothTool::scanAllThenConnect(const ScanCondition& condition, ListCallback callback) {
    scanAllDeviceWithCondition(condition, [this, callback](const QList<PeripheralPtr>& found,
                                                           const OptionalError& failure) {
        dealScanedAllDeviceWithArray(found, failure, callback);
    });
}

void BluetoothTool::scanAndConnectAllDeviceWithName(const QString& name, ListCallback callback) {
    scanAllThenConnect(conditionOf(name), std::move(callback));
}

void BluetoothTool::scanAndConnectAllDeviceWithRule(Rule rule, ListCallback callback) {
    scanAllThenConnect(conditionOf(std::move(rule)), std::move(callback));
}

void BluetoothTool::dealScanedAllDeviceWithArray(const QList<PeripheralPtr>& peripherals,
                                                 const OptionalError& failure,
                                                 ListCallback callback) {
    if (failure || peripherals.isEmpty()) {
        callback(peripherals, failure);
        return;
    }
    // Each peripheral's first report counts once; later link events of it do not. The state
    // lets go of the peripherals once reported, since their connect callbacks keep it.
    struct Batch {
        QList<PeripheralPtr> waiting;
        QList<PeripheralPtr> all;
        ListCallback callback;
    };
    auto batch = std::make_shared<Batch>(Batch{peripherals, peripherals, std::move(callback)});
    for (qsizetype n = 0; n < peripherals.size(); ++n) {
        Scheduler::instance().after(
            kBatchConnectStagger * n, this, [this, batch, peripheral = peripherals[n]] {
                connectDeviceWithPeripheral(peripheral, [batch](const PeripheralPtr& reported,
                                                                const OptionalError& result) {
                    if (!batch->waiting.removeOne(reported))
                        return;
                    reported->setConnectErrorDescription(result ? result->domain : QString());
                    if (!batch->waiting.isEmpty())
                        return;
                    const ListCallback done = std::exchange(batch->callback, nullptr);
                    done(std::exchange(batch->all, {}), std::nullopt);
                });
            });
    }
}

void BluetoothTool::disconnectWithPeripheral(const PeripheralPtr& peripheral) {
    if (peripheral)
        peripheral->disconnectDevice();
}

void BluetoothTool::disconnectWithIdentifier(const QString& identifier) {
    disconnectWithPeripheral(centerManager().searchDeviceWithPeripheral(identifier));
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
        callback(nullptr, error(ErrorNotConnected, kTextNotConnected));
        return;
    }
    peripheral->discoverDeviceServiceWithUUIDArray(
        {serviceUUID}, [=, this](const QList<ServicePtr>&, const OptionalError& failure) {
            // An empty answer without an error: the link went away while we asked.
            if (!failure && !peripheral->isConnected())
                return callback(nullptr, std::nullopt);
            const ServicePtr service = peripheral->searchServiceWithService(serviceUUID);
            if (failure || !service)
                return callback(nullptr, failure ? failure->withCode(ErrorNoService)
                                                 : error(ErrorNoService, kTextNoService));
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
                                                   : error(ErrorNoCharacteristic, kTextNoService));
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
            // Bytes left from an earlier link belong to no frame of this one.
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
                    deliverNotification(value, mapped, callback);
                });
        });
}

void BluetoothTool::deliverNotification(const Bytes& value, const OptionalError& failure,
                                        const DataCallback& callback) {
    if (value.empty()) {
        if (failure)
            callback(std::nullopt, failure);
        return;
    }
    // A frame handler may cause the next notification synchronously (the answer to a poll can
    // make a desk report at once): that one waits until this one is cut.
    if (m_splitting) {
        m_pendingDeliveries.push_back([this, value, failure, callback] {
            m_bluethoothData.append(value, [&](const Bytes& frame) { callback(frame, failure); });
        });
        return;
    }
    m_splitting = true;
    m_bluethoothData.append(value, [&](const Bytes& frame) { callback(frame, failure); });
    while (!m_pendingDeliveries.empty()) {
        const auto next = std::move(m_pendingDeliveries.front());
        m_pendingDeliveries.pop_front();
        next();
    }
    m_splitting = false;
}

void BluetoothTool::readValueWithPeripheral(const PeripheralPtr& peripheral,
                                            const QString& serviceUUID, const QString& readUUID,
                                            DataCallback callback) {
    searchCharacteristicWithPeripheral(
        peripheral, serviceUUID, readUUID,
        [=, this](const CharacteristicPtr& characteristic, const OptionalError& failure) {
            if (failure)
                return callback(std::nullopt, failure);
            if (!characteristic)
                return;
            characteristic->readValueWithCallback([=, this](const CharacteristicPtr&,
                                                            const Bytes& value,
                                                            const OptionalError& result) {
                if (result)
                    return callback(std::nullopt, result->withCode(ErrorRead));
                setBluetoothState(StateRead, peripheral);
                callback(value, std::nullopt);
            });
        });
}

void BluetoothTool::withDescriptor(
    const PeripheralPtr& peripheral, const QString& serviceUUID, const QString& characterUUID,
    std::function<void(const DescriptorPtr&, const OptionalError&)> use) {
    searchCharacteristicWithPeripheral(
        peripheral, serviceUUID, characterUUID,
        [use](const CharacteristicPtr& characteristic, const OptionalError& failure) {
            if (failure)
                return use(nullptr, failure);
            if (!characteristic)
                return;
            characteristic->discoverDescriptorWithCallback(
                [use](const QList<DescriptorPtr>& descriptors, const OptionalError& result) {
                    if (result)
                        return use(nullptr, result);
                    if (descriptors.isEmpty())
                        return use(nullptr, error(ErrorNoDescriptor, kTextNoDescriptor));
                    use(descriptors.first(), std::nullopt);
                });
        });
}

void BluetoothTool::writeDescriptorWithPeripheral(const PeripheralPtr& peripheral,
                                                  const QString& serviceUUID,
                                                  const QString& characterUUID, const Bytes& data,
                                                  ErrorCallback callback) {
    withDescriptor(peripheral, serviceUUID, characterUUID,
                   [data, callback](const DescriptorPtr& descriptor, const OptionalError& failure) {
                       if (failure)
                           return callback(failure);
                       descriptor->writeValueWithData(data, callback);
                   });
}

void BluetoothTool::readDescriptorWithPeripheral(const PeripheralPtr& peripheral,
                                                 const QString& serviceUUID,
                                                 const QString& characterUUID,
                                                 DataCallback callback) {
    withDescriptor(peripheral, serviceUUID, characterUUID,
                   [callback](const DescriptorPtr& descriptor, const OptionalError& failure) {
                       if (failure)
                           return callback(std::nullopt, failure);
                       descriptor->readValueWithCallback(
                           [callback](const Bytes& value, const OptionalError& result) {
                               if (result)
                                   return callback(std::nullopt, result);
                               callback(value, std::nullopt);
                           });
                   });
}

void BluetoothTool::readRSSIWithPeripheral(const PeripheralPtr& peripheral, RSSICallback callback) {
    if (!peripheral || !peripheral->isConnected())
        return callback(0, error(ErrorNotConnected, kTextNotConnected));
    peripheral->readDeviceRSSIWithCallback(std::move(callback));
}

BluetoothTool::PeripheralCallback BluetoothTool::subscribeAndWrite(const QString& serviceUUID,
                                                                   const QString& notifyUUID,
                                                                   const QString& wirteUUID,
                                                                   const Bytes& writeData,
                                                                   DataCallback callback) {
    return [=, this](const PeripheralPtr& peripheral, const OptionalError& failure) {
        if (failure)
            return callback(std::nullopt, failure);
        notifyDataWithPeripheral(peripheral, serviceUUID, notifyUUID, true, callback);
        writeDataWithPeripheral(peripheral, serviceUUID, wirteUUID, writeData,
                                [callback](const CharacteristicPtr&, const OptionalError& result) {
                                    if (result)
                                        callback(std::nullopt, result);
                                });
    };
}

void BluetoothTool::connectDeviceWithName(const QString& name, const QString& serviceUUID,
                                          const QString& notifyUUID, const QString& wirteUUID,
                                          const Bytes& writeData, DataCallback callback) {
    scanAndConnectDeviceWithName(name, subscribeAndWrite(serviceUUID, notifyUUID, wirteUUID,
                                                         writeData, std::move(callback)));
}

void BluetoothTool::connectDeviceWithIdentifier(const QString& identifier,
                                                const QString& serviceUUID,
                                                const QString& notifyUUID, const QString& wirteUUID,
                                                const Bytes& writeData, DataCallback callback) {
    connectDeviceWithIdentifier(identifier, subscribeAndWrite(serviceUUID, notifyUUID, wirteUUID,
                                                              writeData, std::move(callback)));
}

} // namespace ostrel
