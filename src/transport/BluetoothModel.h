#pragma once

#include <QString>
#include <QStringList>

namespace ostrel {

// A controller family, 0 to 9; 0 stands for every family. Only 1 and 2 exchange frames.
using BluetoothType = int;

// The advertised-name heads and GATT identifiers of one controller family. This table is the
// only place the wire's UUIDs are written down; everything else derives them from a desk's name.
class BluetoothModel {
public:
    BluetoothModel() = default;
    explicit BluetoothModel(BluetoothType type) { initDataWithType(type); }
    static BluetoothModel initWithBluetoothType(BluetoothType type) { return BluetoothModel(type); }

    // Stores the type whatever it is; only 0 to 9 get heads and identifiers, any other value
    // leaves them empty, which every consumer treats as "nothing to talk to".
    void initDataWithType(BluetoothType type);

    const QStringList& bluetoothHeadArray() const { return m_bluetoothHeadArray; }
    void setBluetoothHeadArray(const QStringList& heads) { m_bluetoothHeadArray = heads; }
    const QString& serviceUUID() const { return m_serviceUUID; }
    void setServiceUUID(const QString& uuid) { m_serviceUUID = uuid; }
    const QString& writeCharacteristicUUID() const { return m_writeCharacteristicUUID; }
    void setWriteCharacteristicUUID(const QString& uuid) { m_writeCharacteristicUUID = uuid; }
    const QString& readCharacteristicUUID() const { return m_readCharacteristicUUID; }
    void setReadCharacteristicUUID(const QString& uuid) { m_readCharacteristicUUID = uuid; }
    BluetoothType type() const { return m_type; }
    void setType(BluetoothType type) { m_type = type; }

private:
    QStringList m_bluetoothHeadArray;
    QString m_serviceUUID;
    QString m_writeCharacteristicUUID;
    QString m_readCharacteristicUUID;
    BluetoothType m_type = 0;
};

} // namespace ostrel
