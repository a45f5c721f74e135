#pragma once

#include "Bytes.h"

#include <optional>
#include <string>
#include <string_view>

namespace ostrel {

// Everything the host says to the desk and the reading of the desk's seven-segment display.
// Stateless: builders return complete frames (0x9B, length, type, payload, CRC high byte first,
// 0x9D) ready to be written.
class BluetoothProtocol {
public:
    // ---- Envelope ----

    // Hexadecimal text to bytes, read in pairs after lower-casing; a non-hex character counts as
    // 0 and a trailing single character is the high nibble alone ("abc" -> AB C0). A space where
    // a pair would start is skipped, so "05 03 82" reads as 050382.
    static std::optional<Bytes> dataForHexString(const std::optional<std::string>& text);
    // 0x9B + body + 0x9D; the body is not inspected.
    static Bytes appendHeadAndFoot(const Bytes& body);

    // ---- Commands ----

    // The answer to a keypad poll for `index` (the held key). Indices 4, 5, 6 and 15 or more have
    // no table text and give the empty frame 9B FF FF 9D; polls answer those with the commands
    // below instead.
    static Bytes cmdForTableResponseType(int index);
    static Bytes cmdForTableInfo();
    static Bytes cmdForKeyDisplay();
    // Height in the desk's own unit, sent as an unsigned 16-bit number.
    static Bytes cmdForTableTargetHeight(int height);
    // Only the low 8 bits of `thickness` are sent.
    static Bytes cmdForTableEditTabletopThickness(int thickness);
    // Anti-collision: sends `sensitivity` (low 8 bits) when `state` is non-zero, else 0.
    static Bytes cmdForResistanceGoBackWithState(int state, int sensitivity);
    // The same with the state as stored in the device record ("0" or "1"), read as an integer.
    static Bytes cmdForResistanceGoBackWithState(std::string_view state, int sensitivity);
    // Light strip: modes 1-8 are built-in effects, mode 9 a custom colour; any other mode has no
    // frame. The colour goes on the wire as green, red, blue.
    static std::optional<Bytes> cmdForLightStripColorWithSwitchStatus(int switchStatus, int mode,
                                                                      int red, int green, int blue);

    // ---- Display decoding (only the low 8 bits of each code count) ----

    // One segment pattern read as a digit where it can be one.
    static std::string_view getNumberShow(int code);
    // One segment pattern read as a letter; shapes that are also digits are left empty.
    static std::string_view getStringValue(int code);
    // The letter readings of the digit-or-letter shapes.
    static std::string_view getSpecialStr1(int code);
    static std::string_view getSpecialStr2(int code);

    // The height text ("72.5", "110"); a decimal point on the middle digit is honoured.
    static std::string getNumber(int d1, int d2, int d3);
    // "E" plus the two right digits ("E10"), or "-OL" for the slide-down display.
    static std::string getError(int d1, int d2, int d3);

    // Recognisers of the special words. Their small asymmetries (isTop accepts only one "T"
    // shape, isError only one "-OL" shape) are how the desk firmware is read and are relied on.
    static bool isRST(int d1, int d2, int d3);
    static bool isBottom(int d1, int d2, int d3);
    static bool isError(int d1, int d2, int d3);
    static bool isOFF(int d1, int d2, int d3);
    static bool isOL(int d1, int d2, int d3);
    static bool isOn(int d1, int d2, int d3);
    static bool isTop(int d1, int d2, int d3);
    static bool isLRChange(int d1, int d2, int d3);
    static bool isLOC(int d1, int d2, int d3);
    static bool isMemoryHeight(int d1, int d2, int d3);
    static bool isVersion(int d1, int d2, int d3);
    static bool isBackward(int d1, int d2, int d3);
    static bool is000(int d1, int d2, int d3);
};

} // namespace ostrel
