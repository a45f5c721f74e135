#pragma once

#include "BluetoothTool.h"

#include <chrono>
#include <functional>

namespace ostrel {

// The link operations the application itself does not use, over the same tool: connecting by
// identifier, scanning and connecting in one call (one desk or all of them), reading values,
// descriptors and signal strength, and connect-subscribe-write in one call. A light handle:
// make one wherever needed; its callbacks only rely on the tool.
class BluetoothToolExtras {
public:
    using PeripheralCallback = BluetoothTool::PeripheralCallback;
    using ListCallback = BluetoothTool::ListCallback;
    using DataCallback = BluetoothTool::DataCallback;
    using Rule = BluetoothTool::Rule;
    using ErrorCallback = std::function<void(const OptionalError& error)>;
    using RSSICallback = std::function<void(int rssi, const OptionalError& error)>;

    static constexpr std::chrono::milliseconds kBatchConnectStagger{300};

    explicit BluetoothToolExtras(BluetoothTool& tool) : m_tool(&tool) {}

    void connectDeviceWithIdentifier(const QString& identifier, PeripheralCallback callback);
    void scanAndConnectDeviceWithRule(Rule rule, PeripheralCallback callback);
    void scanAndConnectDeviceWithIdentifier(const QString& identifier, PeripheralCallback callback);
    void scanAndConnectAllDeviceWithName(const QString& name, ListCallback callback);
    void scanAndConnectAllDeviceWithRule(Rule rule, ListCallback callback);
    void dealScanedAllDeviceWithArray(const QList<PeripheralPtr>& peripherals,
                                      const OptionalError& error, ListCallback callback);
    void disconnectWithIdentifier(const QString& identifier);

    void readValueWithPeripheral(const PeripheralPtr& peripheral, const QString& serviceUUID,
                                 const QString& readUUID, DataCallback callback);
    void writeDescriptorWithPeripheral(const PeripheralPtr& peripheral, const QString& serviceUUID,
                                       const QString& characterUUID, const Bytes& data,
                                       ErrorCallback callback);
    void readDescriptorWithPeripheral(const PeripheralPtr& peripheral, const QString& serviceUUID,
                                      const QString& characterUUID, DataCallback callback);
    void readRSSIWithPeripheral(const PeripheralPtr& peripheral, RSSICallback callback);

    // Connect, subscribe and write in one call; frames and every error go to `callback`.
    void connectDeviceWithName(const QString& name, const QString& serviceUUID,
                               const QString& notifyUUID, const QString& wirteUUID,
                               const Bytes& writeData, DataCallback callback);
    void connectDeviceWithIdentifier(const QString& identifier, const QString& serviceUUID,
                                     const QString& notifyUUID, const QString& wirteUUID,
                                     const Bytes& writeData, DataCallback callback);

private:
    using DescriptorUse = std::function<void(const DescriptorPtr&, const OptionalError&)>;

    void scanAllThenConnect(const BluetoothTool::ScanCondition& condition, ListCallback callback);
    void withDescriptor(const PeripheralPtr& peripheral, const QString& serviceUUID,
                        const QString& characterUUID, DescriptorUse use);
    PeripheralCallback subscribeAndWrite(const QString& serviceUUID, const QString& notifyUUID,
                                         const QString& wirteUUID, const Bytes& writeData,
                                         DataCallback callback);

    BluetoothTool* m_tool;
};

} // namespace ostrel
