#pragma once

#include "Bytes.h"

#include <cstddef>
#include <functional>
#include <span>

namespace ostrel {

// Cuts the desk's notification stream into frames. A frame is 0x9B, a length byte L, L bytes
// and 0x9D; a head whose length points at a 0x9D is taken as a frame without checking its CRC
// (the classifier does that). Notifications may split or join frames arbitrarily.
//
// Bytes before and between frames found in one pass are dropped; bytes after the last frame
// found stay buffered for the next notification. While no frame is found the buffer grows up
// to `maxBuffered` bytes (at least one maximal frame, 257 bytes). Beyond that it keeps only the
// bytes from the earliest 0x9B that could still start a frame (its frame is not yet complete),
// else nothing, so a stream of garbage never grows it and a frame in progress is never lost.
//
// Not reentrant: onFrame must not call back into the same splitter.
class FrameSplitter {
public:
    static constexpr std::size_t kMaxFrameSize = 257;

    explicit FrameSplitter(std::size_t maxBuffered = 4096);

    // Appends one notification's bytes and calls onFrame for each complete frame, in order.
    void append(std::span<const std::uint8_t> chunk,
                const std::function<void(const Bytes& frame)>& onFrame);
    // The same in two steps, for a caller that must not wrap itself in a function object:
    // push the bytes, then take frames until there is none (which ends the pass).
    void push(std::span<const std::uint8_t> chunk);
    // The next complete frame, valid until the next call; null at the end of the pass.
    const Bytes* nextFrame();
    void clear();
    std::size_t bufferedSize() const;

private:
    void dropOverflow();

    std::size_t m_maxBuffered;
    Bytes m_buffer;
    std::size_t m_scanned = 0;  // where this pass looks next
    std::size_t m_consumed = 0; // end of the last frame this pass found
    Bytes m_frame; // reused for every delivered frame, so steady traffic does not allocate
};

} // namespace ostrel
