#include "DisplayRepeats.h"

#include "protocol/FrameType.h"

namespace ostrel {

bool DisplayRepeats::passes(const Bytes& bytes, bool keyHeld) {
    if (bytes.size() <= 2 || bytes[2] != frame::kDisplayFrame)
        return true;
    if (!keyHeld && bytes == m_last && ++m_heldBack < kPassEvery)
        return false;
    m_last.assign(bytes.begin(), bytes.end());
    m_heldBack = 0;
    return true;
}

} // namespace ostrel
