#pragma once

#include <array>
#include <cstdint>

namespace ostrel {

// The three segment patterns of the handset display, left to right. Bit 0 is segment a (top)
// through bit 6, g (middle); bit 7 is the decimal point after the digit.
using SegmentCodes = std::array<std::uint8_t, 3>;

// What the controller's three-digit seven-segment display shows, as raw segment patterns.
class SegmentDisplay {
public:
    static constexpr std::uint8_t kDecimalPoint = 0x80;

    static constexpr SegmentCodes kReset{0x50, 0x6D, 0x78};     // "rSt"
    static constexpr SegmentCodes kChildLock{0x38, 0x3F, 0x39}; // "LOC"
    static constexpr SegmentCodes kSlideDown{0x40, 0x3F, 0x38}; // "-0L"
    static constexpr SegmentCodes kPowerOff{0x3F, 0x71, 0x71};  // "OFF"
    static constexpr SegmentCodes kPowerOn{0x3F, 0x54, 0x00};   // "On "
    static constexpr SegmentCodes kMemorySet{0x6D, 0x40, 0x00}; // "S- "

    // The pattern of one decimal digit (only the last digit of `value` counts).
    static std::uint8_t digit(int value);
    // A height in tenths of the display unit: below 100 units with one decimal ("72.5"), from
    // 100 units in whole units, rounded ("110"); the handset has only three digits.
    static SegmentCodes height(int tenths);
    // "E" and two digits ("E05").
    static SegmentCodes error(int code);
};

} // namespace ostrel
