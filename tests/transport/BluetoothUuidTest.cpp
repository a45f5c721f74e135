#include "transport/BluetoothUuid.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

TEST(BluetoothUuidTest, NormalizedFormIsUpperCaseAndShortOnTheBaseUuidOnly) {
    const std::pair<const char*, const char*> cases[] = {
        {"0000180d-0000-1000-8000-00805f9b34fb", "180D"},
        {"{00002A37-0000-1000-8000-00805F9B34FB}", "2A37"},
        {" fff1 ", "FFF1"},
        // Not on the base UUID, or not a 16-bit value on it: kept whole.
        {"0000180d-0000-1000-8000-00805f9b34fc", "0000180D-0000-1000-8000-00805F9B34FC"},
        {"1234180d-0000-1000-8000-00805f9b34fb", "1234180D-0000-1000-8000-00805F9B34FB"},
        {"0000ZZ0d-0000-1000-8000-00805f9b34fb", "0000ZZ0D-0000-1000-8000-00805F9B34FB"},
        {"{6e400001-b5a3-f393-e0a9-e50e24dcca9e}", "6E400001-B5A3-F393-E0A9-E50E24DCCA9E"},
        {"", ""},
    };
    for (const auto& [input, expected] : cases)
        EXPECT_EQ(BluetoothUuid::normalized(QString::fromLatin1(input)),
                  QString::fromLatin1(expected))
            << input;
    EXPECT_TRUE(BluetoothUuid::same(QStringLiteral("2a39"),
                                    QStringLiteral("00002A39-0000-1000-8000-00805F9B34FB")));
    EXPECT_FALSE(BluetoothUuid::same(QStringLiteral("2A37"), QStringLiteral("2A39")));
    EXPECT_TRUE(BluetoothUuid::isValidIdentifier(QStringLiteral("AA:BB:CC:DD:EE:0F")));
    EXPECT_TRUE(
        BluetoothUuid::isValidIdentifier(QStringLiteral("6F1C5F0E-3A57-4B52-9D0E-8A1F00C0FFEE")));
    EXPECT_FALSE(BluetoothUuid::isValidIdentifier(QStringLiteral("desk-1")));
}

} // namespace
} // namespace ostrel
