#pragma once

#include "Bytes.h"

#include <cstddef>
#include <cstdint>

namespace ostrel {

// CRC-8/MAXIM-DOW (reflected 0x31, initial 0, no final XOR; "123456789" gives 0xA1).
// A running checksum over any number of updates. No desk frame uses it; it is kept as a utility.
class CRC8 {
public:
    void reset() { m_value = m_initialValue; }
    std::uint8_t getValue() const { return m_value; }

    // Folds in `count` bytes of `buffer` starting at `offset`; a range past the end of the
    // buffer is cut at the end.
    void updateWithBuf(const Bytes& buffer, std::size_t offset, std::size_t count);
    void updateWithBuf(const Bytes& buffer, std::size_t count) { updateWithBuf(buffer, 0, count); }
    void updateWithValue(std::uint8_t value);

private:
    std::uint8_t m_initialValue = 0;
    std::uint8_t m_value = 0;
};

} // namespace ostrel
