#include "NotificationFrames.h"

namespace ostrel {

void NotificationFrames::deliver(const Bytes& value, const OptionalError& error,
                                 const FrameCallback& callback) {
    if (value.empty()) {
        if (error)
            callback(std::nullopt, error);
        return;
    }
    if (m_delivering) {
        m_waiting.push_back([this, value, error, callback] { cut(value, error, callback); });
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

void NotificationFrames::cut(const Bytes& value, const OptionalError& error,
                             const FrameCallback& callback) {
    m_splitter.append(value, [&](const Bytes& frame) { callback(frame, error); });
}

} // namespace ostrel
