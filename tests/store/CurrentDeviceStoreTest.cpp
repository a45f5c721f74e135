#include "store/CurrentDeviceStore.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

// Pairing a bound desk again keeps its record: the search screen's test, on the whole record.
TEST(CurrentDeviceStoreTest, PresetsParseOnlyFromFourParts) {
    using P = CurrentDeviceStore::Presets;
    EXPECT_EQ(CurrentDeviceStore::parsePresets("70,110,0,95"), (P{70, 110, 0, 95}));
    EXPECT_EQ(CurrentDeviceStore::parsePresets("70.6, 110cm,x,-1"), (P{70, 110, 0, -1}));
    EXPECT_FALSE(CurrentDeviceStore::parsePresets("70,110,0"));
    EXPECT_FALSE(CurrentDeviceStore::parsePresets(""));
    EXPECT_FALSE(CurrentDeviceStore::parsePresets(std::nullopt));
}

} // namespace
} // namespace ostrel
