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

} // namespace ostrel
