#pragma once

#include "store/OMBluetoothModel.h"

namespace ostrel {

// The current desk's record as the preset and anti-collision pages read it. Without a readable
// current-device file they see what a newly bound desk starts with, under no name, so saving it
// never adds a nameless desk to the bound list.
class CurrentDeviceRecord {
public:
    static OMBluetoothModel load();
};

} // namespace ostrel
