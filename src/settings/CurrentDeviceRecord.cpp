#include "settings/CurrentDeviceRecord.h"

#include "store/CurrentDeviceStore.h"

namespace ostrel {

OMBluetoothModel CurrentDeviceRecord::load() {
    OMBluetoothModel record = CurrentDeviceStore::load();
    if (record.bluetoothName)
        return record;
    record = CurrentDeviceStore::freshRecord({}, {});
    record.deviceName.reset();
    record.bluetoothName.reset();
    record.bluetoothMacAddress.reset();
    return record;
}

OMBluetoothModel CurrentDeviceRecord::change(const std::function<void(OMBluetoothModel&)>& apply) {
    OMBluetoothModel record = load();
    apply(record);
    CurrentDeviceStore::save(record);
    return record;
}

} // namespace ostrel
