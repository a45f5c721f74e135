#pragma once

#include "BluetoothError.h"
#include "PlatformCentralDelegate.h"
#include "protocol/Bytes.h"

#include <QList>
#include <deque>
#include <functional>
#include <memory>

namespace ostrel {

class BluetoothCharacteristic;
class BluetoothPeripheral;

// One GATT descriptor of a characteristic (0x2902 is the one that switches notifications).
class BluetoothDescriptor : public std::enable_shared_from_this<BluetoothDescriptor> {
public:
    using ReadCallback = std::function<void(const Bytes& value, const OptionalError& error)>;
    using WriteCallback = std::function<void(const OptionalError& error)>;

    BluetoothDescriptor(const QString& uuid, const std::shared_ptr<BluetoothCharacteristic>& owner);

    QString UUID() const { return m_uuid; }
    const Bytes& value() const { return m_value; }
    std::shared_ptr<BluetoothCharacteristic> characteristic() const {
        return m_characteristic.lock();
    }
    std::shared_ptr<BluetoothPeripheral> peripheral() const;
    const QList<Bytes>& readDataArray() const { return m_readDataArray; }
    const QList<Bytes>& writeDataArray() const { return m_writeDataArray; }

    void readValueWithCallback(ReadCallback callback);
    void writeValueWithData(const Bytes& data, WriteCallback callback);
    void writeByte(std::uint8_t byte, WriteCallback callback) {
        writeValueWithData({byte}, std::move(callback));
    }

    // Platform events, routed here by the peripheral.
    void didReadValue(const Bytes& value, const OptionalError& error);
    void didWriteValue(const OptionalError& error);

private:
    GattPath path() const;

    QString m_uuid;
    std::weak_ptr<BluetoothCharacteristic> m_characteristic;
    Bytes m_value;
    QList<Bytes> m_readDataArray;
    QList<Bytes> m_writeDataArray;
    std::deque<ReadCallback> m_readCallbackArray;
    std::deque<WriteCallback> m_writeCallbackArray;
};

using DescriptorPtr = std::shared_ptr<BluetoothDescriptor>;

} // namespace ostrel
