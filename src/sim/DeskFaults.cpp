#include "sim/DeskFaults.h"

namespace ostrel {

bool DeskFaults::setError(int code) {
    if (code < 0 || code > kHighestError)
        return false;
    m_error = code;
    return true;
}

std::optional<SegmentCodes> DeskFaults::display() const {
    if (m_error != 0)
        return SegmentDisplay::error(m_error);
    if (m_slideDown)
        return SegmentDisplay::kSlideDown;
    if (m_resetNeeded)
        return SegmentDisplay::kReset;
    if (m_childLock)
        return SegmentDisplay::kChildLock;
    return std::nullopt;
}

} // namespace ostrel
