#include "BluetoothService.h"

#include "BluetoothPeripheral.h"
#include "BluetoothUuid.h"
#include "PlatformCentral.h"

#include <algorithm>

namespace ostrel {

BluetoothService::BluetoothService(const QString& uuid,
                                   const std::shared_ptr<BluetoothPeripheral>& peripheral)
    : m_uuid(uuid), m_peripheral(peripheral) {}

void BluetoothService::discoverCharacteristicWithCallback(CharacteristicsCallback callback) {
    discoverCharacteristicWithCharacteristicUUIDs({}, std::move(callback));
}

void BluetoothService::discoverCharacteristicWithCharacteristicUUIDs(
    const QStringList& uuids, CharacteristicsCallback callback) {
    const bool allKnown = m_isOn && !uuids.isEmpty() &&
                          std::all_of(uuids.begin(), uuids.end(), [&](const QString& uuid) {
                              return searchCharacteristciWithCharacteristic(uuid) != nullptr;
                          });
    if (allKnown) {
        callback(m_characteristicArray, std::nullopt);
        return;
    }
    const auto owner = peripheral();
    PlatformCentral* central = owner ? owner->platform() : nullptr;
    if (!central)
        return;
    m_findCharacterCallbackArray.push_back(std::move(callback));
    central->discoverCharacteristics(owner->identifierString(), m_uuid, uuids);
}

CharacteristicPtr
BluetoothService::searchCharacteristciWithCharacteristic(const QString& uuid) const {
    return BluetoothUuid::findIn(m_characteristicArray, uuid);
}

void BluetoothService::didDiscoverCharacteristics(const OptionalError& error) {
    const auto owner = peripheral();
    const PlatformCentral* central = owner ? owner->platform() : nullptr;
    if (!error && central) {
        for (const PlatformCharacteristicInfo& info :
             central->characteristics(owner->identifierString(), m_uuid)) {
            if (!searchCharacteristciWithCharacteristic(info.uuid))
                m_characteristicArray.append(std::make_shared<BluetoothCharacteristic>(
                    BluetoothUuid::normalized(info.uuid), info.properties, shared_from_this()));
        }
    }
    auto waiting = std::exchange(m_findCharacterCallbackArray, {});
    for (const CharacteristicsCallback& callback : waiting)
        callback(m_characteristicArray, error);
}

void BluetoothService::reset() {
    for (const CharacteristicPtr& characteristic : std::as_const(m_characteristicArray))
        characteristic->invalidate();
    m_characteristicArray.clear();
    m_isOn = m_isEnabled = false;
    auto waiting = std::exchange(m_findCharacterCallbackArray, {});
    for (const CharacteristicsCallback& callback : waiting)
        callback({}, std::nullopt);
}

} // namespace ostrel
