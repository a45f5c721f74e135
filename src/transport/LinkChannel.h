#pragma once

#include "NotificationFrames.h"
#include "PlatformCentral.h"
#include "core/PacketSink.h"

#include <memory>

namespace ostrel {

// One link's frames, with everything about the link resolved when it was opened (desk type,
// notify and write characteristics, the platform's way to each). The notification stream is
// cut into frames here; a keypad poll is answered on the spot with the classifier's current key
// through the link's writer, on whichever thread the notification arrived (a socket's reading
// thread, so a busy GUI thread delays no answer). Every other frame goes to the subscriber on
// the application's main thread, and only while the channel lasts. Nothing on the way from a
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

    PlatformCentral::ChannelWriter m_writer;
    FrameCallback m_callback;
    FrameCallback m_toHandleFrame; // made once: building it per notification would allocate
    NotificationFrames m_frames;
};

} // namespace ostrel
