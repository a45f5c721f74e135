#include "LinkChannel.h"

#include "protocol/BluetoothResultHandle.h"

#include <QCoreApplication>
#include <QThread>

namespace ostrel {

LinkChannel::LinkChannel(PlatformCentral::ChannelWriter writer, FrameCallback callback)
    : m_writer(std::move(writer)), m_callback(std::move(callback)),
      m_toHandleFrame([this](const std::optional<Bytes>& frame, const OptionalError& error) {
          handleFrame(frame, error);
      }) {}

void LinkChannel::received(std::span<const std::uint8_t> value) {
    m_frames.deliver(value, std::nullopt, m_toHandleFrame);
}

void LinkChannel::failed(const BluetoothError& error) {
    m_callback(std::nullopt, error);
}

void LinkChannel::handleFrame(const std::optional<Bytes>& frame, const OptionalError& error) {
    if (!frame || !BluetoothResultHandle::isPoll(*frame)) {
        passOn(frame, error);
        return;
    }
    // Written while the poll is handled: a late answer reads as a released key.
    BluetoothResultHandle& handle = BluetoothResultHandle::sharedInstance();
    if (const Bytes* answer = m_writer ? handle.answerPoll() : nullptr)
        m_writer(*answer);
}

void LinkChannel::passOn(const std::optional<Bytes>& frame, const OptionalError& error) {
    QCoreApplication* application = QCoreApplication::instance();
    if (!application || QThread::currentThread() == application->thread()) {
        m_callback(frame, error);
        return;
    }
    QMetaObject::invokeMethod(
        application,
        [channel = weak_from_this(), frame, error] {
            if (const std::shared_ptr<LinkChannel> alive = channel.lock())
                alive->m_callback(frame, error);
        },
        Qt::QueuedConnection);
}

} // namespace ostrel
