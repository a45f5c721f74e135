#pragma once

#include "NotificationFrames.h"
#include "PlatformCentral.h"
#include "core/PacketSink.h"

namespace ostrel {

// One link's frames, with everything about the link resolved when it was opened (desk type,
// notify and write characteristics, the platform's way to each). The notification stream is
// cut into frames here; a keypad poll is answered on the spot with the classifier's current key
// through the link's writer, and every other frame goes to the subscriber. Nothing on the way
// from a notification to its answer looks anything up, allocates, keeps a history, arms a timer
// or touches a file.
class LinkChannel final : public PacketSink {
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

    PlatformCentral::ChannelWriter m_writer;
    FrameCallback m_callback;
    FrameCallback m_toHandleFrame; // made once: building it per notification would allocate
    NotificationFrames m_frames;
};

} // namespace ostrel
