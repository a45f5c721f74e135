#pragma once

#include "store/OMBluetoothModel.h"

#include <QString>

namespace ostrel {

// What pairing a desk leaves in the store: the desk in the bound-device list of the current
// desk model, and the desk as the current device.
class DeskBinding {
public:
    static constexpr char kCurrentDeviceFileName[] = "FileName_Current_BluetoothModel";

    // A fresh record for a desk seen under `name` with the platform's `identifier`, stamped now.
    static OMBluetoothModel newRecord(const QString& name, const QString& identifier);
    // Saves the desk as bound, then makes it the current device.
    static void bindDevice(const QString& name, const QString& identifier);
    // Writes the bound record of that name, with the connection time refreshed, as the current
    // device; a desk not bound under that name gets a fresh record instead.
    static void setCurrentDeviceWithperipheral(const QString& name, const QString& identifier);
};

} // namespace ostrel
