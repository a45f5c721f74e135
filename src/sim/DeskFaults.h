#pragma once

#include "sim/SegmentDisplay.h"

#include <optional>

namespace ostrel {

// The controller's faults: an error code, the child lock, a reset request and the slide-down
// alarm. They decide which keys the controller obeys and take over its display, the most
// serious first, whatever the link and the motor are doing.
class DeskFaults {
public:
    static constexpr int kHighestError = 37;

    int error() const { return m_error; }
    // E01..E37; 0 clears. Answers false, changing nothing, for a code the controller lacks.
    bool setError(int code);
    void setChildLock(bool locked) { m_childLock = locked; }
    bool resetNeeded() const { return m_resetNeeded; }
    void setResetNeeded(bool needed) { m_resetNeeded = needed; }
    void setSlideDown(bool sliding) { m_slideDown = sliding; }

    // A reset request leaves Down working, so that the desk can be driven to the bottom.
    bool blocksKeys() const { return m_error != 0 || m_childLock || m_slideDown; }
    // What the display shows instead of the height, if anything.
    std::optional<SegmentCodes> display() const;

private:
    int m_error = 0;
    bool m_childLock = false;
    bool m_resetNeeded = false;
    bool m_slideDown = false;
};

} // namespace ostrel
