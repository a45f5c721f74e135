#include "CRC8.h"

#include <algorithm>
#include <array>

namespace ostrel {
namespace {

constexpr std::array<std::uint8_t, 256> makeTable() {
    std::array<std::uint8_t, 256> table{};
    for (unsigned index = 0; index < 256; ++index) {
        unsigned value = index;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1U) ? (value >> 1) ^ 0x8CU : value >> 1;
        table[index] = static_cast<std::uint8_t>(value);
    }
    return table;
}

constexpr std::array<std::uint8_t, 256> kTable = makeTable();

} // namespace

void CRC8::updateWithBuf(const Bytes& buffer, std::size_t offset, std::size_t count) {
    const std::size_t begin = std::min(offset, buffer.size());
    const std::size_t end = begin + std::min(count, buffer.size() - begin);
    for (std::size_t i = begin; i < end; ++i)
        updateWithValue(buffer[i]);
}

void CRC8::updateWithValue(std::uint8_t value) {
    // An 8-bit register shifted left by a whole byte is empty, so only the table lookup remains.
    m_value = kTable[m_value ^ value];
}

} // namespace ostrel
