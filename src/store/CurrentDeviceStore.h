#pragma once

#include "store/OMBluetoothModel.h"

#include <QString>
#include <array>
#include <optional>

namespace ostrel {

// The bound desk in use this run. Its record lives twice, in the bound-device list of the current
// desk model and in the current-device file; every change is written to both, list first.
class CurrentDeviceStore {
public:
    static constexpr char kFileName[] = "FileName_Current_BluetoothModel";
    static constexpr char kNoPresets[] = "0,0,0,0";
    using Presets = std::array<int, 4>; // Sit, Stand, M1, M2 in whole cm, 0 = not set

    // An empty record when there is no current device.
    static OMBluetoothModel load();
    static void save(const OMBluetoothModel& record);
    // The current-device file only: the bound list keeps what it had.
    static void writeCurrent(const OMBluetoothModel& record);
    static void remove();

    // A newly bound desk's record, dated with the scheduler's wall clock. `identifier` is the
    // platform's identifier of the desk: the platform gives no hardware address.
    static OMBluetoothModel freshRecord(const QString& name, const QString& identifier);
    // Pairing: saves a fresh record of the desk as bound, then makes the desk current.
    static void bindDevice(const QString& name, const QString& identifier);
    // Writes the bound record of that name, its connection time refreshed, as the current device
    // (the bound list keeps the earlier time); a desk not bound under that name gets a fresh
    // record instead.
    static void setCurrentDeviceWithperipheral(const QString& name, const QString& identifier);

    // Four comma-separated whole numbers, or nothing when the text has another shape.
    static std::optional<Presets> parsePresets(const std::optional<std::string>& memoryHeight);
    // The text of `presets` with `slot` (0-3) set to a height in tenths of a centimetre, in whole
    // centimetres as "%.0f" prints them in C, an exact half to the even number (80.5 gives "80";
    // Qt's formatting would round it away from zero); empty for a slot out of range.
    static std::string presetsText(const Presets& presets, int slot, double heightTenths);
};

} // namespace ostrel
