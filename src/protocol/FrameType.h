#pragma once

#include <cstdint>

// The type byte of a desk-link frame (position 2) and the opcodes of command frames
// (position 3), shared by the host's classifier and the virtual desk.
namespace ostrel::frame {

inline constexpr std::uint8_t kKeyFrame = 0x02;        // host: keypad answer to a poll
inline constexpr std::uint8_t kCommandFrame = 0x03;    // host: command, opcode follows
inline constexpr std::uint8_t kPollFrame = 0x11;       // desk: keypad poll
inline constexpr std::uint8_t kDisplayFrame = 0x12;    // desk: its display mirrored
inline constexpr std::uint8_t kDeviceInfoFrame = 0x82; // desk: device information
inline constexpr std::uint8_t kLightStripFrame = 0x9F; // desk: light-strip state

inline constexpr std::uint8_t kTargetHeightCommand = 0x80;
inline constexpr std::uint8_t kDeviceInfoCommand = 0x82;
inline constexpr std::uint8_t kThicknessCommand = 0x86;
inline constexpr std::uint8_t kAntiCollisionCommand = 0x89;
inline constexpr std::uint8_t kLightStripCommand = 0x9F;

} // namespace ostrel::frame
