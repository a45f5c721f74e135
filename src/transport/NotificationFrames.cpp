#include "NotificationFrames.h"

namespace ostrel {

void NotificationFrames::deliver(std::span<const std::uint8_t> value, const OptionalError& error,
                                 const FrameCallback& callback) {
    if (value.empty()) {
        if (error)
            callback(std::nullopt, error);
        return;
    }
    if (m_delivering) {
        m_waiting.push_back([this, value = Bytes(value.begin(), value.end()), error, callback] {
            cut(value, error, callback);
        });
        return;
    }
    m_delivering = true;
    cut(value, error, callback);
    while (!m_waiting.empty()) {
        const auto next = std::move(m_waiting.front());
        m_waiting.pop_front();
        next();
    }
    m_delivering = false;
}

void NotificationFrames::cut(std::span<const std::uint8_t> value, const OptionalError& error,
                             const FrameCallback& callback) {
    m_splitter.push(value);
    while (const Bytes* frame = m_splitter.nextFrame()) {
        if (!m_frame)
            m_frame.emplace();
        m_frame->assign(frame->begin(), frame->end());
        callback(m_frame, error);
    }
}

} // namespace ostrel
