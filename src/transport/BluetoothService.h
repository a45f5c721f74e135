#pragma once

#include "BluetoothCharacteristic.h"
#include "BluetoothError.h"

#include <QList>
#include <QString>
#include <deque>
#include <functional>
#include <memory>

namespace ostrel {

class BluetoothPeripheral;

// One GATT service of a connected peripheral and the characteristics found in it so far.
class BluetoothService : public std::enable_shared_from_this<BluetoothService> {
public:
    using CharacteristicsCallback = std::function<void(
        const QList<CharacteristicPtr>& characteristics, const OptionalError& error)>;

    BluetoothService(const QString& uuid, const std::shared_ptr<BluetoothPeripheral>& peripheral);

    QString UUID() const { return m_uuid; }
    QString name() const { return m_uuid; }
    bool isOn() const { return m_isOn; }
    bool isEnabled() const { return m_isEnabled; }
    std::shared_ptr<BluetoothPeripheral> peripheral() const { return m_peripheral.lock(); }
    const QList<CharacteristicPtr>& characteristicArray() const { return m_characteristicArray; }

    void discoverCharacteristicWithCallback(CharacteristicsCallback callback);
    // Answers at once when every wanted characteristic is already known: the link's steady
    // traffic (a poll answer every few tens of milliseconds) must not wait for the radio.
    void discoverCharacteristicWithCharacteristicUUIDs(const QStringList& uuids,
                                                       CharacteristicsCallback callback);
    CharacteristicPtr searchCharacteristciWithCharacteristic(const QString& uuid) const;

    // Discovery found the service on the live link.
    void markOn() { m_isOn = m_isEnabled = true; }
    // The link went away: forget the characteristics and release waiting searches empty-handed.
    void reset();

    // Platform event, routed here by the peripheral.
    void didDiscoverCharacteristics(const OptionalError& error);

private:
    QString m_uuid;
    std::weak_ptr<BluetoothPeripheral> m_peripheral;
    bool m_isOn = false;
    bool m_isEnabled = false;
    QList<CharacteristicPtr> m_characteristicArray;
    std::deque<CharacteristicsCallback> m_findCharacterCallbackArray;
};

using ServicePtr = std::shared_ptr<BluetoothService>;

} // namespace ostrel
