#pragma once

#include <cstddef>
#include <cstdint>

namespace ostrel::fuzz {

// Feeds one fuzz input through the frame splitter into a fresh classifier, checking on the way
// that every delivered frame and every poll answer is well formed; a broken invariant traps.
// Input: byte 0 the held key, byte 1 options (bit 0: repair each frame's CRC so the classifier
// sees it; the upper bits pick the notification size), then the notification stream.
// Returns the number of frames the classifier accepted.
std::size_t runProtocolInput(const std::uint8_t* data, std::size_t size);

} // namespace ostrel::fuzz
