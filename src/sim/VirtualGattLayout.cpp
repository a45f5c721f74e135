#include "sim/VirtualGattLayout.h"

#include "sim/VirtualDesk.h"
#include "transport/BluetoothUuid.h"

namespace ostrel {

namespace {

constexpr int kRead = 0x02;
constexpr int kWriteWithoutResponse = 0x04;
constexpr int kWrite = 0x08;
constexpr int kNotify = 0x10;

} // namespace

const QString VirtualGattLayout::kClientConfiguration = QStringLiteral("2902");

QString VirtualGattLayout::service() const {
    return BluetoothUuid::normalized(m_desk.serviceUuid());
}

QList<PlatformCharacteristicInfo> VirtualGattLayout::characteristics(const QString& service) const {
    if (!BluetoothUuid::same(service, m_desk.serviceUuid()))
        return {};
    const QString notify = BluetoothUuid::normalized(m_desk.notifyUuid());
    const QString write = BluetoothUuid::normalized(m_desk.writeUuid());
    if (notify == write)
        return {{notify, kRead | kWriteWithoutResponse | kWrite | kNotify}};
    return {{notify, kNotify}, {write, kWriteWithoutResponse | kWrite}};
}

QStringList VirtualGattLayout::descriptors(const GattPath& path) const {
    return isNotify(path) ? QStringList{kClientConfiguration} : QStringList{};
}

bool VirtualGattLayout::isNotify(const GattPath& path) const {
    return BluetoothUuid::same(path.service, m_desk.serviceUuid()) &&
           BluetoothUuid::same(path.characteristic, m_desk.notifyUuid());
}

bool VirtualGattLayout::isWritable(const GattPath& path) const {
    return BluetoothUuid::same(path.characteristic, m_desk.writeUuid());
}

GattPath VirtualGattLayout::notifyPath(const QString& identifier) const {
    return GattPath{identifier, service(), BluetoothUuid::normalized(m_desk.notifyUuid())};
}

} // namespace ostrel
