#include "store/CurrentDeviceStore.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

// Pairing a bound desk again keeps its record: the search screen's test, on the whole record.
TEST(CurrentDeviceStoreTest, PresetsParseOnlyFromFourPartsAndStoreHalvesRoundedToEven) {
    using P = CurrentDeviceStore::Presets;
    EXPECT_EQ(CurrentDeviceStore::parsePresets("70,110,0,95"), (P{70, 110, 0, 95}));
    EXPECT_EQ(CurrentDeviceStore::parsePresets("70.6, 110cm,x,-1"), (P{70, 110, 0, -1}));
    EXPECT_FALSE(CurrentDeviceStore::parsePresets("70,110,0"));
    EXPECT_FALSE(CurrentDeviceStore::parsePresets(""));
    EXPECT_FALSE(CurrentDeviceStore::parsePresets(std::nullopt));

    const P presets{72, 110, 0, 0};
    EXPECT_EQ(CurrentDeviceStore::presetsText(presets, 2, 805), "72,110,80,0");
    EXPECT_EQ(CurrentDeviceStore::presetsText(presets, 0, 726), "73,110,0,0");
    EXPECT_EQ(CurrentDeviceStore::presetsText(presets, 3, 815), "72,110,0,82");
    EXPECT_EQ(CurrentDeviceStore::presetsText(presets, -1, 805), "");
    EXPECT_EQ(CurrentDeviceStore::presetsText(presets, 4, 805), "");
}

} // namespace
} // namespace ostrel
