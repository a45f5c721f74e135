#include "protocol/CRC16.h"

#include <gtest/gtest.h>
#include <random>

namespace ostrel {
namespace {

// Straight bit-by-bit CRC-16/MODBUS, independent of the table method under test.
std::uint16_t bitwiseModbus(const Bytes& data) {
    std::uint16_t crc = 0xFFFF;
    for (std::uint8_t byte : data) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) ? static_cast<std::uint16_t>((crc >> 1) ^ 0xA001) : crc >> 1;
    }
    return crc;
}

// Where the CRC goes on the wire is the command catalogue's test.
TEST(CRC16Test, MatchesBitwiseReferenceOnRandomInputs) {
    EXPECT_EQ(CRC16::crc16(Bytes{'1', '2', '3', '4', '5', '6', '7', '8', '9'}), 0x4B37);
    std::mt19937 random(1234);
    for (int round = 0; round < 2000; ++round) {
        Bytes data(random() % 300);
        for (auto& byte : data)
            byte = static_cast<std::uint8_t>(random());
        ASSERT_EQ(CRC16::crc16(data), bitwiseModbus(data)) << "length " << data.size();
    }
}

} // namespace
} // namespace ostrel
