#include "CRC16.h"

#include <algorithm>
#include <array>
#include <limits>

namespace ostrel {
namespace {

// The byte-wise method keeps the CRC as two running bytes and needs two 256-entry tables: for
// each index, the register contents after shifting that byte through the polynomial, split
// into the byte that is folded into the other running byte and the byte that replaces it.
struct Tables {
    std::array<std::uint8_t, 256> high{};
    std::array<std::uint8_t, 256> low{};
};

constexpr Tables makeTables() {
    Tables tables;
    for (unsigned index = 0; index < 256; ++index) {
        unsigned value = index;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1U) ? (value >> 1) ^ 0xA001U : value >> 1;
        tables.high[index] = static_cast<std::uint8_t>(value & 0xFFU);
        tables.low[index] = static_cast<std::uint8_t>(value >> 8);
    }
    return tables;
}

constexpr Tables kTables = makeTables();

} // namespace

std::uint16_t CRC16::crc16(std::span<const std::uint8_t> data) {
    // `first` holds the low byte of the standard CRC value, `second` its high byte.
    std::uint8_t first = 0xFF;
    std::uint8_t second = 0xFF;
    const std::size_t count =
        std::min<std::size_t>(data.size(), std::numeric_limits<std::uint16_t>::max());
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t index = first ^ data[i];
        first = second ^ kTables.high[index];
        second = kTables.low[index];
    }
    return static_cast<std::uint16_t>((second << 8) | first);
}

Bytes CRC16::appendCRC16(const Bytes& data) {
    const std::uint16_t crc = crc16(data);
    Bytes out;
    out.reserve(data.size() + 2);
    out.assign(data.begin(), data.end());
    out.push_back(static_cast<std::uint8_t>(crc >> 8));
    out.push_back(static_cast<std::uint8_t>(crc & 0xFFU));
    return out;
}

} // namespace ostrel
