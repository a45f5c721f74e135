#include "BluetoothToolExtras.h"

#include "BluetoothUuid.h"
#include "core/Scheduler.h"

namespace ostrel {

void BluetoothToolExtras::connectDeviceWithIdentifier(const QString& identifier,
                                                      PeripheralCallback callback) {
    if (identifier.isEmpty()) {
        callback(nullptr, BluetoothError::of(BluetoothTool::ErrorIdentifier,
                                             BluetoothTool::kTextIdentifierEmpty));
        return;
    }
    if (!BluetoothUuid::isValidIdentifier(identifier)) {
        callback(nullptr, BluetoothError::of(BluetoothTool::ErrorIdentifier,
                                             BluetoothTool::kTextIdentifierInvalid));
        return;
    }
    BluetoothCenterManager& manager = m_tool->centerManager();
    PeripheralPtr known = manager.searchDeviceWithPeripheral(identifier);
    if (!known)
        known = manager.foundDeviceDict().value(identifier);
    if (!known) {
        const QList<PeripheralPtr> retrieved =
            manager.retrievePeripheralsWithIdentifiers({identifier});
        known = retrieved.isEmpty() ? nullptr : retrieved.first();
    }
    if (known)
        m_tool->connectDeviceWithPeripheral(known, std::move(callback));
    else
        scanAndConnectDeviceWithIdentifier(identifier, std::move(callback));
}

void BluetoothToolExtras::scanAndConnectDeviceWithRule(Rule rule, PeripheralCallback callback) {
    m_tool->scanAndConnectDeviceWithCondition(BluetoothTool::conditionOf(std::move(rule)),
                                              std::move(callback));
}

void BluetoothToolExtras::scanAndConnectDeviceWithIdentifier(const QString& identifier,
                                                             PeripheralCallback callback) {
    scanAndConnectDeviceWithRule(
        [identifier](const PeripheralPtr& peripheral) {
            return peripheral->identifierString() == identifier;
        },
        std::move(callback));
}

void BluetoothToolExtras::scanAllThenConnect(const BluetoothTool::ScanCondition& condition,
                                             ListCallback callback) {
    m_tool->scanAllDeviceWithCondition(
        condition, [extras = *this, callback](const QList<PeripheralPtr>& found,
                                              const OptionalError& failure) mutable {
            extras.dealScanedAllDeviceWithArray(found, failure, callback);
        });
}

void BluetoothToolExtras::scanAndConnectAllDeviceWithName(const QString& name,
                                                          ListCallback callback) {
    scanAllThenConnect(BluetoothTool::conditionOf(name), std::move(callback));
}

void BluetoothToolExtras::scanAndConnectAllDeviceWithRule(Rule rule, ListCallback callback) {
    scanAllThenConnect(BluetoothTool::conditionOf(std::move(rule)), std::move(callback));
}

void BluetoothToolExtras::dealScanedAllDeviceWithArray(const QList<PeripheralPtr>& peripherals,
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
    BluetoothTool* tool = m_tool;
    for (qsizetype n = 0; n < peripherals.size(); ++n) {
        Scheduler::instance().after(
            kBatchConnectStagger * n, tool, [tool, batch, peripheral = peripherals[n]] {
                tool->connectDeviceWithPeripheral(peripheral, [batch](const PeripheralPtr& reported,
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

void BluetoothToolExtras::disconnectWithIdentifier(const QString& identifier) {
    m_tool->disconnectWithPeripheral(
        m_tool->centerManager().searchDeviceWithPeripheral(identifier));
}

void BluetoothToolExtras::readValueWithPeripheral(const PeripheralPtr& peripheral,
                                                  const QString& serviceUUID,
                                                  const QString& readUUID, DataCallback callback) {
    BluetoothTool* tool = m_tool;
    tool->searchCharacteristicWithPeripheral(
        peripheral, serviceUUID, readUUID,
        [=](const CharacteristicPtr& characteristic, const OptionalError& failure) {
            if (failure)
                return callback(std::nullopt, failure);
            if (!characteristic)
                return;
            characteristic->readValueWithCallback(
                [=](const CharacteristicPtr&, const Bytes& value, const OptionalError& result) {
                    if (result)
                        return callback(std::nullopt, result->withCode(BluetoothTool::ErrorRead));
                    tool->setBluetoothState(BluetoothTool::StateRead, peripheral);
                    callback(value, std::nullopt);
                });
        });
}

void BluetoothToolExtras::withDescriptor(const PeripheralPtr& peripheral,
                                         const QString& serviceUUID, const QString& characterUUID,
                                         DescriptorUse use) {
    m_tool->searchCharacteristicWithPeripheral(
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
                        return use(nullptr, BluetoothError::of(BluetoothTool::ErrorNoDescriptor,
                                                               BluetoothTool::kTextNoDescriptor));
                    use(descriptors.first(), std::nullopt);
                });
        });
}

void BluetoothToolExtras::writeDescriptorWithPeripheral(const PeripheralPtr& peripheral,
                                                        const QString& serviceUUID,
                                                        const QString& characterUUID,
                                                        const Bytes& data, ErrorCallback callback) {
    withDescriptor(peripheral, serviceUUID, characterUUID,
                   [data, callback](const DescriptorPtr& descriptor, const OptionalError& failure) {
                       if (failure)
                           return callback(failure);
                       descriptor->writeValueWithData(data, callback);
                   });
}

void BluetoothToolExtras::readDescriptorWithPeripheral(const PeripheralPtr& peripheral,
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

void BluetoothToolExtras::readRSSIWithPeripheral(const PeripheralPtr& peripheral,
                                                 RSSICallback callback) {
    if (!peripheral || !peripheral->isConnected())
        return callback(0, BluetoothError::of(BluetoothTool::ErrorNotConnected,
                                              BluetoothTool::kTextNotConnected));
    peripheral->readDeviceRSSIWithCallback(std::move(callback));
}

BluetoothToolExtras::PeripheralCallback
BluetoothToolExtras::subscribeAndWrite(const QString& serviceUUID, const QString& notifyUUID,
                                       const QString& wirteUUID, const Bytes& writeData,
                                       DataCallback callback) {
    BluetoothTool* tool = m_tool;
    return [=](const PeripheralPtr& peripheral, const OptionalError& failure) {
        if (failure)
            return callback(std::nullopt, failure);
        tool->notifyDataWithPeripheral(peripheral, serviceUUID, notifyUUID, true, callback);
        tool->writeDataWithPeripheral(
            peripheral, serviceUUID, wirteUUID, writeData,
            [callback](const CharacteristicPtr&, const OptionalError& result) {
                if (result)
                    callback(std::nullopt, result);
            });
    };
}

void BluetoothToolExtras::connectDeviceWithName(const QString& name, const QString& serviceUUID,
                                                const QString& notifyUUID, const QString& wirteUUID,
                                                const Bytes& writeData, DataCallback callback) {
    m_tool->scanAndConnectDeviceWithName(name, subscribeAndWrite(serviceUUID, notifyUUID, wirteUUID,
                                                                 writeData, std::move(callback)));
}

void BluetoothToolExtras::connectDeviceWithIdentifier(
    const QString& identifier, const QString& serviceUUID, const QString& notifyUUID,
    const QString& wirteUUID, const Bytes& writeData, DataCallback callback) {
    connectDeviceWithIdentifier(identifier, subscribeAndWrite(serviceUUID, notifyUUID, wirteUUID,
                                                              writeData, std::move(callback)));
}

} // namespace ostrel
