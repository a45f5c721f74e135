#pragma once

#include "store/OMBluetoothModel.h"

#include <QString>

namespace ostrel {

// The desk's anti-collision as the current device record keeps it: on or off, and a sensitivity
// level of 1 (low), 2 (middle) or 3 (high). The desk hears both in one frame.
class AntiCollisionSetting {
public:
    static bool isOn(const OMBluetoothModel& record);
    // The number the desk is sent.
    static int sensitivity(const OMBluetoothModel& record);
    // The level shown: 1 for "1", 2 for "2", anything else reads as high (3).
    static int level(const OMBluetoothModel& record);
    static QString levelName(int level);
    // Tells the current desk the record's state; with anti-collision off it hears sensitivity 0.
    static void actionSetResistanceGoBack(const OMBluetoothModel& record);
};

} // namespace ostrel
