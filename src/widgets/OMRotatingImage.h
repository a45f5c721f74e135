#pragma once

#include "core/Scheduler.h"
#include "widgets/OMImageButton.h"

namespace ostrel {

// A clickable picture that spins while work is under way ("connect_refresh" during a scan).
// Stopping puts it back upright.
class OMRotatingImage : public OMImageButton {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kTurnPeriod{1000};
    static constexpr Scheduler::Duration kFrameInterval{40};

    using OMImageButton::OMImageButton;

    bool isRotating() const { return !m_ticker.isNull(); }
    void startRotating();
    void stopRotating();

private:
    TimerHandle m_ticker;
    int m_frame = 0;
};

} // namespace ostrel
