#include "sim/SegmentDisplay.h"

#include "protocol/BluetoothProtocol.h"

#include <gtest/gtest.h>

using ostrel::BluetoothProtocol;
using ostrel::SegmentCodes;
using ostrel::SegmentDisplay;

namespace {

std::string heightText(const SegmentCodes& c) {
    return BluetoothProtocol::getNumber(c[0], c[1], c[2]);
}

} // namespace

// What the handset shows must read back, through the host's decoder, as the height it meant.
TEST(SegmentDisplay, HeightsReadBackThroughTheHostDecoder) {
    const std::vector<std::pair<int, std::string>> cases{
        {600, "60.0"}, {725, "72.5"}, {999, "99.9"}, {283, "28.3"}, {1000, "100"},
        {1004, "100"}, {1005, "101"}, {1200, "120"}, {-5, "00.0"},  {20000, "999"},
    };
    for (const auto& [tenths, text] : cases)
        EXPECT_EQ(heightText(SegmentDisplay::height(tenths)), text) << tenths;
}

// The words the desk shows reach the host as their words in VirtualDeskTest's faults and power
// cycle.
