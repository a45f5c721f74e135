#pragma once

#include <cstdint>
#include <span>

namespace ostrel {

// Takes a stream's packets as they arrive, straight from the read buffer: no copy, no signal.
// Holders keep it in a shared_ptr and call a copy of that pointer, so a sink replaced while it
// is handling a packet lives until it returns.
class PacketSink {
public:
    virtual ~PacketSink() = default;
    virtual void received(std::span<const std::uint8_t> packet) = 0;
};

} // namespace ostrel
