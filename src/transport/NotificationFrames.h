#pragma once

#include "BluetoothError.h"
#include "protocol/FrameSplitter.h"

#include <deque>
#include <functional>
#include <optional>
#include <span>

namespace ostrel {

// The desk's notification stream cut into frames, each handed to the subscriber with the error
// its notification carried. A subscriber may cause the next notification while it handles a
// frame (the answer to a poll can make a desk report at once): that one waits its turn, so
// frames always arrive whole and in order. Steady traffic allocates nothing.
class NotificationFrames {
public:
    using FrameCallback =
        std::function<void(const std::optional<Bytes>& frame, const OptionalError& error)>;

    // One notification value. An empty value only passes its error on.
    void deliver(std::span<const std::uint8_t> value, const OptionalError& error,
                 const FrameCallback& callback);
    // Bytes of an earlier link belong to no frame of the next one.
    void clear() { m_splitter.clear(); }
    const FrameSplitter& splitter() const { return m_splitter; }

private:
    void cut(std::span<const std::uint8_t> value, const OptionalError& error,
             const FrameCallback& callback);

    FrameSplitter m_splitter;
    std::optional<Bytes> m_frame; // the frame handed out, reused
    bool m_delivering = false;
    std::deque<std::function<void()>> m_waiting;
};

} // namespace ostrel
