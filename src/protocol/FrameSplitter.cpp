#include "FrameSplitter.h"

#include <algorithm>

namespace ostrel {
namespace {

constexpr std::uint8_t kHead = 0x9B;
constexpr std::uint8_t kFoot = 0x9D;

// Index one past the frame starting at `at`, or 0 when none starts there (yet).
std::size_t frameEnd(const Bytes& buffer, std::size_t at) {
    if (buffer[at] != kHead || at + 1 >= buffer.size())
        return 0;
    const std::size_t footAt = at + 1 + buffer[at + 1];
    return footAt < buffer.size() && buffer[footAt] == kFoot ? footAt + 1 : 0;
}

// A head whose frame would end beyond the buffer may still be completed by later bytes.
bool canStillStartFrame(const Bytes& buffer, std::size_t at) {
    return buffer[at] == kHead &&
           (at + 1 >= buffer.size() || at + 1 + buffer[at + 1] >= buffer.size());
}

} // namespace

FrameSplitter::FrameSplitter(std::size_t maxBuffered)
    : m_maxBuffered(std::max(maxBuffered, kMaxFrameSize)) {}

void FrameSplitter::append(std::span<const std::uint8_t> chunk,
                           const std::function<void(const Bytes& frame)>& onFrame) {
    push(chunk);
    while (const Bytes* frame = nextFrame())
        onFrame(*frame);
}

void FrameSplitter::push(std::span<const std::uint8_t> chunk) {
    m_buffer.insert(m_buffer.end(), chunk.begin(), chunk.end());
}

const Bytes* FrameSplitter::nextFrame() {
    while (m_scanned < m_buffer.size()) {
        const std::size_t end = frameEnd(m_buffer, m_scanned);
        if (end == 0) {
            ++m_scanned;
            continue;
        }
        m_frame.assign(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_scanned),
                       m_buffer.begin() + static_cast<std::ptrdiff_t>(end));
        m_consumed = m_scanned = end;
        return &m_frame;
    }
    m_buffer.erase(m_buffer.begin(), m_buffer.begin() + static_cast<std::ptrdiff_t>(m_consumed));
    m_scanned = m_consumed = 0;
    dropOverflow();
    return nullptr;
}

void FrameSplitter::dropOverflow() {
    if (m_buffer.size() <= m_maxBuffered)
        return;
    // Any head that can still start a frame lies within the last kMaxFrameSize bytes.
    std::size_t keepFrom = m_buffer.size() - kMaxFrameSize;
    while (keepFrom < m_buffer.size() && !canStillStartFrame(m_buffer, keepFrom))
        ++keepFrom;
    m_buffer.erase(m_buffer.begin(), m_buffer.begin() + static_cast<std::ptrdiff_t>(keepFrom));
}

void FrameSplitter::clear() {
    m_buffer.clear();
    m_scanned = m_consumed = 0;
}

std::size_t FrameSplitter::bufferedSize() const {
    return m_buffer.size();
}

} // namespace ostrel
