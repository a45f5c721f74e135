#include "sim/SegmentDisplay.h"

#include <algorithm>

namespace ostrel {

namespace {
constexpr std::array<std::uint8_t, 10> kDigits{0x3F, 0x06, 0x5B, 0x4F, 0x66,
                                               0x6D, 0x7D, 0x07, 0x7F, 0x6F};
constexpr std::uint8_t kLetterE = 0x79;
constexpr int kLargestShown = 999;

SegmentCodes threeDigits(int value) {
    return {SegmentDisplay::digit(value / 100), SegmentDisplay::digit(value / 10),
            SegmentDisplay::digit(value)};
}
} // namespace

std::uint8_t SegmentDisplay::digit(int value) {
    return kDigits[static_cast<std::size_t>(std::abs(value) % 10)];
}

SegmentCodes SegmentDisplay::height(int tenths) {
    tenths = std::max(tenths, 0);
    if (tenths <= kLargestShown) {
        SegmentCodes codes = threeDigits(tenths);
        codes[1] |= kDecimalPoint;
        return codes;
    }
    return threeDigits(std::min((tenths + 5) / 10, kLargestShown));
}

SegmentCodes SegmentDisplay::error(int code) {
    return {kLetterE, digit(code / 10), digit(code)};
}

} // namespace ostrel
