#include "BluetoothProtocol.h"

#include "CRC16.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <initializer_list>

namespace ostrel {
namespace {

// ---- Segment decoding ----

struct SegmentReading {
    std::uint8_t code;
    std::string_view numberShow;
    std::string_view stringValue;
    std::string_view special1;
    std::string_view special2;
};

// The readings of every shape the handset can show. The columns disagree on purpose: the plain
// letter column leaves digit-or-letter shapes empty and the special columns give their letters.
constexpr SegmentReading kReadings[] = {
    {0x06, "1", "1", "", ""},  {0x07, "7", "7", "", ""}, {0x09, "Pt", ":", "", ""},
    {0x10, "", "I", "", ""},   {0x1E, "", "J", "", ""},  {0x31, "T", "T", "", "T"},
    {0x37, "N", "N", "", ""},  {0x38, "", "L", "", ""},  {0x39, "C", "C", "", ""},
    {0x3D, "", "G", "", ""},   {0x3E, "U", "U", "", ""}, {0x3F, "0", "", "0", "O"},
    {0x40, "hg", "-", "", ""}, {0x4F, "3", "3", "", ""}, {0x50, "r", "R", "", ""},
    {0x54, "n", "", "N", "n"}, {0x55, "", "M", "", ""},  {0x58, "c", "c", "", ""},
    {0x5B, "2", "2", "", ""},  {0x5C, "o", "O", "", ""}, {0x5E, "d", "", "D", "d"},
    {0x66, "4", "4", "", ""},  {0x67, "", "Q", "", ""},  {0x6D, "5", "", "5", "S"},
    {0x6F, "9", "9", "", ""},  {0x71, "F", "F", "", ""}, {0x73, "", "P", "", ""},
    {0x74, "", "h", "", ""},   {0x76, "", "H", "", ""},  {0x77, "A", "", "A", "R"},
    {0x78, "t", "", "T", ""},  {0x79, "E", "E", "", ""}, {0x7A, "", "K", "", ""},
    {0x7C, "b", "", "B", "b"}, {0x7D, "6", "6", "", ""}, {0x7F, "8", "8", "", ""},
    {0x80, "", ".", "", ""},
};

using Column = std::array<std::string_view, 256>;

// One lookup table per decoder, so decoding a display costs three array reads.
constexpr Column makeColumn(std::string_view SegmentReading::*column) {
    Column table{};
    for (const SegmentReading& reading : kReadings)
        table[reading.code] = reading.*column;
    return table;
}

constexpr Column kNumberShow = makeColumn(&SegmentReading::numberShow);
constexpr Column kStringValue = makeColumn(&SegmentReading::stringValue);
constexpr Column kSpecial1 = makeColumn(&SegmentReading::special1);
constexpr Column kSpecial2 = makeColumn(&SegmentReading::special2);

constexpr std::uint8_t low8(int value) {
    return static_cast<std::uint8_t>(value & 0xFF);
}

// The round "O" of OFF, On, -OL, TOP, bot and LOC: either the full zero shape or the small o.
// The middle test can never succeed (no shape reads "o" there) and is kept so the rule reads
// as the firmware's.
bool isRoundO(int code) {
    return BluetoothProtocol::getSpecialStr1(code) == "0" ||
           BluetoothProtocol::getSpecialStr2(code) == "o" ||
           BluetoothProtocol::getStringValue(code) == "O";
}

bool isSlideDownPattern(int d1, int d2, int d3) {
    return low8(d1) == 0x40 && (low8(d2) == 0x5C || low8(d2) == 0x3F) && low8(d3) == 0x38;
}

// The error digits read first as letters, then as the letter reading of a digit-like shape.
std::string_view errorCharacter(int code) {
    const std::string_view text = BluetoothProtocol::getStringValue(code);
    return text.empty() ? BluetoothProtocol::getSpecialStr1(code) : text;
}

// ---- Commands ----

int hexNibble(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

// Command text, then binary arguments, then CRC and envelope.
Bytes buildFrame(std::string_view hexText, std::initializer_list<std::uint8_t> arguments = {}) {
    Bytes body = *BluetoothProtocol::dataForHexString(std::string(hexText));
    body.insert(body.end(), arguments);
    return BluetoothProtocol::appendHeadAndFoot(CRC16::appendCRC16(body));
}

// Keypad answers indexed by the held key; 4-6 are answered by dedicated commands instead.
constexpr std::array<std::string_view, 15> kResponseTexts = {
    "06020000", "06020100", "06020200", "06023000", // none, up, down, memory set + 3
    "",         "",         "",                     // information, target height, thickness
    "06038301", "06038302",                         // opcode 0x83 with 1 and 2
    "06020400", "06020800", "06021000", "06020001", // presets Sit, Stand, M1, M2
    "06022000", "06024000",                         // memory set, key bit 0x40
};

// Reads text as a leading integer the way the stored device flags are read; anything else is 0.
int leadingInteger(std::string_view text) {
    const auto start = std::find_if_not(text.begin(), text.end(), [](char c) {
        return std::isspace(static_cast<unsigned char>(c));
    });
    text.remove_prefix(static_cast<std::size_t>(start - text.begin()));
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

} // namespace

// ---- Envelope ----

std::optional<Bytes> BluetoothProtocol::dataForHexString(const std::optional<std::string>& text) {
    if (!text)
        return std::nullopt;
    Bytes out;
    out.reserve(text->size() / 2 + 1);
    std::size_t pos = 0;
    while (pos < text->size()) {
        const char highChar =
            static_cast<char>(std::tolower(static_cast<unsigned char>((*text)[pos])));
        if (highChar == ' ') {
            ++pos;
            continue;
        }
        const int high = std::max(hexNibble(highChar), 0);
        if (pos + 1 == text->size()) {
            out.push_back(static_cast<std::uint8_t>(high << 4));
            break;
        }
        const char lowChar =
            static_cast<char>(std::tolower(static_cast<unsigned char>((*text)[pos + 1])));
        out.push_back(static_cast<std::uint8_t>((high << 4) | std::max(hexNibble(lowChar), 0)));
        pos += 2;
    }
    return out;
}

Bytes BluetoothProtocol::appendHeadAndFoot(const Bytes& body) {
    Bytes frame;
    frame.reserve(body.size() + 2);
    frame.push_back(0x9B);
    frame.insert(frame.end(), body.begin(), body.end());
    frame.push_back(0x9D);
    return frame;
}

// ---- Commands ----

Bytes BluetoothProtocol::cmdForTableResponseType(int index) {
    const bool listed = index >= 0 && static_cast<std::size_t>(index) < kResponseTexts.size();
    return buildFrame(listed ? kResponseTexts[static_cast<std::size_t>(index)] : "");
}

Bytes BluetoothProtocol::cmdForTableInfo() {
    return buildFrame("050382");
}

Bytes BluetoothProtocol::cmdForKeyDisplay() {
    return buildFrame("0712FFFFFF");
}

Bytes BluetoothProtocol::cmdForTableTargetHeight(int height) {
    return buildFrame("070380", {low8(height), low8(height >> 8)});
}

Bytes BluetoothProtocol::cmdForTableEditTabletopThickness(int thickness) {
    return buildFrame("060386", {low8(thickness)});
}

Bytes BluetoothProtocol::cmdForResistanceGoBackWithState(int state, int sensitivity) {
    return buildFrame("070389", {state != 0 ? low8(sensitivity) : std::uint8_t{0}, 0x00});
}

Bytes BluetoothProtocol::cmdForResistanceGoBackWithState(std::string_view state, int sensitivity) {
    return cmdForResistanceGoBackWithState(leadingInteger(state), sensitivity);
}

std::optional<Bytes> BluetoothProtocol::cmdForLightStripColorWithSwitchStatus(int switchStatus,
                                                                              int mode, int red,
                                                                              int green, int blue) {
    if (mode >= 1 && mode <= 8)
        return buildFrame("07039F", {low8(switchStatus), low8(mode)});
    if (mode == 9)
        return buildFrame("0A039F", {low8(switchStatus), 0x09, low8(green), low8(red), low8(blue)});
    return std::nullopt;
}

// ---- Display decoding ----

std::string_view BluetoothProtocol::getNumberShow(int code) {
    return kNumberShow[low8(code)];
}
std::string_view BluetoothProtocol::getStringValue(int code) {
    return kStringValue[low8(code)];
}
std::string_view BluetoothProtocol::getSpecialStr1(int code) {
    return kSpecial1[low8(code)];
}
std::string_view BluetoothProtocol::getSpecialStr2(int code) {
    return kSpecial2[low8(code)];
}

std::string BluetoothProtocol::getNumber(int d1, int d2, int d3) {
    const bool middlePoint = (low8(d2) & 0x80) != 0;
    std::string text(getNumberShow(d1));
    text += getNumberShow(middlePoint ? low8(d2) & 0x7F : d2);
    if (middlePoint)
        text += '.';
    text += getNumberShow(d3);
    return text;
}

std::string BluetoothProtocol::getError(int d1, int d2, int d3) {
    if (isSlideDownPattern(d1, d2, d3))
        return "-OL";
    std::string text = "E";
    text += errorCharacter(d2);
    text += errorCharacter(d3);
    return text;
}

bool BluetoothProtocol::isRST(int d1, int d2, int d3) {
    return (getSpecialStr2(d1) == "R" || getStringValue(d1) == "R") &&
           (getSpecialStr1(d2) == "5" || getSpecialStr2(d2) == "S") &&
           (getSpecialStr1(d3) == "T" || getSpecialStr2(d3) == "T");
}

bool BluetoothProtocol::isBottom(int d1, int d2, int d3) {
    return (getSpecialStr2(d1) == "b" || getSpecialStr1(d1) == "B") && isRoundO(d2) &&
           (getSpecialStr1(d3) == "T" || getSpecialStr2(d3) == "T");
}

bool BluetoothProtocol::isError(int d1, int d2, int d3) {
    return getStringValue(d1) == "E" || (low8(d1) == 0x40 && low8(d2) == 0x5C && low8(d3) == 0x38);
}

bool BluetoothProtocol::isOFF(int d1, int d2, int d3) {
    return isRoundO(d1) && getStringValue(d2) == "F" && getStringValue(d3) == "F";
}

bool BluetoothProtocol::isOL(int d1, int d2, int d3) {
    return getStringValue(d1) == "-" && isRoundO(d2) && getStringValue(d3) == "L";
}

bool BluetoothProtocol::isOn(int d1, int d2, int d3) {
    return isRoundO(d1) &&
           (getSpecialStr1(d2) == "N" || getSpecialStr2(d2) == "n" || getStringValue(d2) == "N") &&
           low8(d3) == 0;
}

bool BluetoothProtocol::isTop(int d1, int d2, int d3) {
    return getSpecialStr2(d1) == "T" && isRoundO(d2) && getStringValue(d3) == "P";
}

bool BluetoothProtocol::isLRChange(int d1, int d2, int d3) {
    const auto isSide = [](std::string_view text) { return text == "R" || text == "L"; };
    return isSide(getStringValue(d1)) && getStringValue(d2) == "-" && isSide(getStringValue(d3));
}

bool BluetoothProtocol::isLOC(int d1, int d2, int d3) {
    const std::string_view last = getStringValue(d3);
    return getStringValue(d1) == "L" && isRoundO(d2) && (last == "c" || last == "C");
}

bool BluetoothProtocol::isMemoryHeight(int d1, int d2, int /*d3*/) {
    return getSpecialStr2(d1) == "S" && getStringValue(d2) == "-";
}

bool BluetoothProtocol::isVersion(int d1, int d2, int d3) {
    return getStringValue(d1) == "L" ||
           (getNumberShow(d1) == "5" && getSpecialStr2(d2) == "R" && getStringValue(d3) == "C");
}

bool BluetoothProtocol::isBackward(int d1, int /*d2*/, int /*d3*/) {
    return getSpecialStr1(d1) == "A";
}

bool BluetoothProtocol::is000(int d1, int d2, int d3) {
    return low8(d1) == 0 && low8(d2) == 0 && low8(d3) == 0;
}

} // namespace ostrel
