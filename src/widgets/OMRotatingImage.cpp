#include "widgets/OMRotatingImage.h"

namespace ostrel {

void OMRotatingImage::startRotating() {
    if (isRotating())
        return;
    // Counting frames rather than adding angles keeps a long scan from drifting off upright.
    constexpr auto framesPerTurn = int(kTurnPeriod / kFrameInterval);
    m_ticker = Scheduler::instance().every(kFrameInterval, this, [this] {
        m_frame = (m_frame + 1) % framesPerTurn;
        setRotation(360.0 * m_frame / framesPerTurn);
    });
}

void OMRotatingImage::stopRotating() {
    m_ticker.cancel();
    m_ticker = {};
    m_frame = 0;
    setRotation(0.0);
}

} // namespace ostrel
