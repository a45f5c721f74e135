#pragma once

#include "DisplayRepeats.h"
#include "NotificationFrames.h"
#include "PlatformCentral.h"
#include "core/PacketSink.h"

#include <atomic>
#include <memory>
#include <thread>

namespace ostrel {

// One link's frames, with everything about the link resolved when it was opened (desk type,
// notify and write characteristics, the platform's way to each). The notification stream is
// cut into frames here; a keypad poll is answered on the spot with the classifier's current key
// through the link's writer, on whichever thread the notification arrived (a socket's reading
// thread, so a busy GUI thread delays no answer). Every other frame but an idle desk's repeated
// display (DisplayRepeats) goes to the subscriber on the application's main thread, and only
// while the channel lasts. A main thread that has left
// frames unhandled for half a second is stuck, and whatever key it holds is stale: polls are
// then answered with no key until it catches up. Nothing on the way from a
// notification to its answer looks anything up, allocates, keeps a history, arms a timer or
// touches a file. Made with make_shared, on the main thread.
class LinkChannel final : public PacketSink, public std::enable_shared_from_this<LinkChannel> {
public:
    using FrameCallback = NotificationFrames::FrameCallback;

    LinkChannel(PlatformCentral::ChannelWriter writer, FrameCallback callback);
    LinkChannel(const LinkChannel&) = delete; // its own frame handler points back at it
    LinkChannel& operator=(const LinkChannel&) = delete;

    // One notification value of the link.
    void received(std::span<const std::uint8_t> value) override;
    // The subscription failed; the subscriber hears it.
    void failed(const BluetoothError& error);

private:
    void handleFrame(const std::optional<Bytes>& frame, const OptionalError& error);
    void passOn(const std::optional<Bytes>& frame, const OptionalError& error);
    bool mainThreadStuck() const;

    PlatformCentral::ChannelWriter m_writer;
    FrameCallback m_callback;
    FrameCallback m_toHandleFrame; // made once: building it per notification would allocate
    NotificationFrames m_frames;
    DisplayRepeats m_repeats;
    std::thread::id m_mainThread; // asking Qt costs a thread-local lookup per frame
    // When the oldest frame passed on to the main thread and not yet handled there was passed
    // on (steady clock, ns); 0 when there is none.
    std::atomic<std::int64_t> m_waitingSince = 0;
};

} // namespace ostrel
