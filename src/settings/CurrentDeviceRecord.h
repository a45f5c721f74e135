#pragma once

#include "store/OMBluetoothModel.h"

#include <functional>

namespace ostrel {

// The current desk's record as the preset and anti-collision pages read it. Without a readable
// current-device file they see what a newly bound desk starts with, under no name, so saving it
// never adds a nameless desk to the bound list.
class CurrentDeviceRecord {
public:
    static OMBluetoothModel load();
    // Applies one change to the record as stored now and saves the whole record to both stores,
    // so that a page never writes back fields changed elsewhere since it opened (the reminder
    // switching itself off, another page). Returns what was saved.
    static OMBluetoothModel change(const std::function<void(OMBluetoothModel&)>& apply);
};

} // namespace ostrel
