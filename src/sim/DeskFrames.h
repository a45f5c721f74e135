#pragma once

#include "protocol/Bytes.h"
#include "sim/SegmentDisplay.h"

#include <cstdint>

namespace ostrel {

// The light strip as the controller holds and reports it.
struct DeskLightStrip {
    int switchStatus = 0;
    int mode = 1;
    int red = 0xFF;
    int green = 0xFF;
    int blue = 0xFF;
};

// What the device-information frame reports. Limits are tenths of a centimetre whatever the
// display unit; the unit flag tells how the display counts.
struct DeskInfo {
    bool inchDisplay = false;
    int maxHeight = 0;
    int minHeight = 0;
    int sensitivity = 0;
    bool supportChildLock = false;
    int tableThickness = 0;
};

// The frames a desk controller sends, each in its envelope with its checksum.
class DeskFrames {
public:
    static Bytes frame(std::uint8_t type, const Bytes& payload);
    static Bytes poll();
    static Bytes display(const SegmentCodes& codes);
    static Bytes deviceInfo(const DeskInfo& info);
    static Bytes lightStrip(const DeskLightStrip& light);
};

} // namespace ostrel
