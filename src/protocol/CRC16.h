#pragma once

#include "Bytes.h"

#include <cstdint>
#include <span>

namespace ostrel {

// CRC-16/MODBUS (reflected 0x8005, initial 0xFFFF, no final XOR) as the desk link uses it.
// Unlike Modbus RTU, the desk expects the two CRC bytes high byte first.
class CRC16 {
public:
    // The standard CRC value (0x4B37 for "123456789", 0xFFFF for no bytes). Only the first
    // 65,535 bytes count, as the desk firmware's length counter is 16 bits wide.
    static std::uint16_t crc16(std::span<const std::uint8_t> data);
    static std::uint16_t crc16(const Bytes& data) { return crc16(std::span(data)); }
    // `data` followed by its CRC, high byte first.
    static Bytes appendCRC16(const Bytes& data);
};

} // namespace ostrel
