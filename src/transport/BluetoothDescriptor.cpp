#include "BluetoothDescriptor.h"

#include "BluetoothCharacteristic.h"
#include "BluetoothPeripheral.h"
#include "PlatformCentral.h"

namespace ostrel {

BluetoothDescriptor::BluetoothDescriptor(const QString& uuid,
                                         const std::shared_ptr<BluetoothCharacteristic>& owner)
    : m_uuid(uuid), m_characteristic(owner) {}

std::shared_ptr<BluetoothPeripheral> BluetoothDescriptor::peripheral() const {
    const auto owner = characteristic();
    return owner ? owner->peripheral() : nullptr;
}

GattPath BluetoothDescriptor::path() const {
    const auto owner = characteristic();
    return owner ? owner->path() : GattPath{};
}

void BluetoothDescriptor::readValueWithCallback(ReadCallback callback) {
    const auto device = peripheral();
    PlatformCentral* central = device ? device->platform() : nullptr;
    if (!central)
        return;
    m_readCallbackArray.push_back(std::move(callback));
    central->readDescriptor(path(), m_uuid);
}

void BluetoothDescriptor::writeValueWithData(const Bytes& data, WriteCallback callback) {
    const auto device = peripheral();
    PlatformCentral* central = device ? device->platform() : nullptr;
    if (!central)
        return;
    m_writeDataArray.append(data);
    m_writeCallbackArray.push_back(std::move(callback));
    central->writeDescriptor(path(), m_uuid, data);
}

void BluetoothDescriptor::didReadValue(const Bytes& value, const OptionalError& error) {
    if (!error) {
        m_value = value;
        m_readDataArray.append(value);
    }
    auto waiting = std::exchange(m_readCallbackArray, {});
    for (const ReadCallback& callback : waiting)
        callback(value, error);
}

void BluetoothDescriptor::didWriteValue(const OptionalError& error) {
    if (m_writeCallbackArray.empty())
        return;
    const WriteCallback callback = std::move(m_writeCallbackArray.front());
    m_writeCallbackArray.pop_front();
    if (callback)
        callback(error);
}

} // namespace ostrel
