#include "LinkChannel.h"

#include "protocol/BluetoothResultHandle.h"
#include "protocol/CommandType.h"

#include <QCoreApplication>
#include <chrono>

namespace ostrel {

namespace {

constexpr std::int64_t kStuckAfter = 500'000'000; // ns

std::int64_t steadyNow() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace

LinkChannel::LinkChannel(PlatformCentral::ChannelWriter writer, FrameCallback callback)
    : m_writer(std::move(writer)), m_callback(std::move(callback)),
      m_toHandleFrame([this](const std::optional<Bytes>& frame, const OptionalError& error) {
          handleFrame(frame, error);
      }),
      m_mainThread(std::this_thread::get_id()) {}

void LinkChannel::received(std::span<const std::uint8_t> value) {
    m_frames.deliver(value, std::nullopt, m_toHandleFrame);
}

void LinkChannel::failed(const BluetoothError& error) {
    m_callback(std::nullopt, error);
}

void LinkChannel::handleFrame(const std::optional<Bytes>& frame, const OptionalError& error) {
    BluetoothResultHandle& handle = BluetoothResultHandle::sharedInstance();
    if (!frame || !BluetoothResultHandle::isPoll(*frame)) {
        if (!frame || m_repeats.passes(*frame, handle.currentCommandType() != command::kNoKey))
            passOn(frame, error);
        return;
    }
    if (!m_writer)
        return;
    // Written while the poll is handled: a late answer reads as a released key.
    if (mainThreadStuck())
        m_writer(BluetoothResultHandle::noKeyAnswer());
    else if (const Bytes* answer = handle.answerPoll())
        m_writer(*answer);
}

bool LinkChannel::mainThreadStuck() const {
    const std::int64_t since = m_waitingSince.load();
    return since != 0 && steadyNow() - since > kStuckAfter;
}

void LinkChannel::passOn(const std::optional<Bytes>& frame, const OptionalError& error) {
    QCoreApplication* application = QCoreApplication::instance();
    if (!application || std::this_thread::get_id() == m_mainThread) {
        m_callback(frame, error);
        return;
    }
    std::int64_t none = 0;
    m_waitingSince.compare_exchange_strong(none, steadyNow());
    QMetaObject::invokeMethod(
        application,
        [channel = weak_from_this(), frame, error] {
            if (const std::shared_ptr<LinkChannel> alive = channel.lock()) {
                alive->m_waitingSince = 0;
                alive->m_callback(frame, error);
            }
        },
        Qt::QueuedConnection);
}

} // namespace ostrel
