#include "transport/BluetoothFilter.h"

#include "transport/BluetoothCharacteristic.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

struct NameCase {
    const char* name;
    int type;
    std::vector<int> passes; // scan rules (0-9) that accept the name
};

class NameToType : public ::testing::TestWithParam<NameCase> {};

TEST_P(NameToType, ResolvesTypeAndPassesOnlyItsRules) {
    const NameCase& c = GetParam();
    const QString name = QString::fromUtf8(c.name);
    EXPECT_EQ(BluetoothFilter::getBluetoothTypeWithPeriperalName(name), c.type);
    for (int type = -1; type <= 10; ++type) {
        const bool expected = std::find(c.passes.begin(), c.passes.end(), type) != c.passes.end();
        EXPECT_EQ(BluetoothFilter::scanRuleWithType(type, name), expected) << "rule " << type;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Names, NameToType,
    ::testing::Values(
        NameCase{"Ostrel-CN-1234", 1, {0, 1}},
        // Heads match anywhere in the name, not only at its start.
        NameCase{"Desk QXR 01", 2, {2}}, // QXR alone is left out of the all-families list
        NameCase{"xxKVM20", 3, {0, 3}},
        // QJW is tested before QJWK, so QJWK desks are driven as type 2.
        NameCase{"QJWK-5", 2, {0, 2, 9}}, NameCase{"QWJ-0001", 2, {0, 2}},
        NameCase{"RX01", 6, {0, 6}}, NameCase{"qwj-0001", 0, {}}, // heads are case-sensitive
        NameCase{"", 0, {}}, NameCase{nullptr, 0, {}}, NameCase{"Headphones", 0, {}}));

TEST(BluetoothCharacteristic, PropertiesStringNamesEachBitInOrder) {
    EXPECT_EQ(BluetoothCharacteristic::propertiesString(0x1A), "Read Write Notify");
    EXPECT_EQ(BluetoothCharacteristic::propertiesString(0x00), "");
    EXPECT_EQ(BluetoothCharacteristic::propertiesString(0x7F),
              "Broadcast Read WriteWithoutResponse Write Notify Indicate "
              "AuthenticatedSignedWrites");
    EXPECT_EQ(BluetoothCharacteristic::propertiesString(0x80), ""); // extended: not named
}

} // namespace
} // namespace ostrel
