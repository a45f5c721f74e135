#include "session/HotKeyMovement.h"

namespace ostrel {

HotKeyMovement::HotKeyMovement(QObject* parent)
    : QObject(parent), m_tempDate(Scheduler::instance().now()) {}

void HotKeyMovement::restartWatch() {
    m_tempHeight = 0.0f;
    m_tempDate = Scheduler::instance().now();
}

void HotKeyMovement::toggle(int type) {
    if (m_isMoving) {
        stop();
        return;
    }
    // Whoever takes the key over ends this movement: the next arrow starts a new one.
    m_claim = HeldKeyOwner::instance().claim(HeldKeyOwner::Source::HotKey, type, this,
                                             [this](HeldKeyOwner::Ending) { reset(); });
    m_isMoving = true;
    armSilenceTimer();
}

void HotKeyMovement::armSilenceTimer() {
    m_silence.cancel();
    m_silence = Scheduler::instance().after(kSilenceLimit, this, [this] { stop(); });
}

void HotKeyMovement::globalKeyMoving(float currentHeight) {
    if (!m_isMoving)
        return;
    armSilenceTimer();
    const Scheduler::Duration now = Scheduler::instance().now();
    if (now - m_tempDate <= kStallStep)
        return;
    if (currentHeight == m_tempHeight)
        stop();
    else
        m_tempHeight = currentHeight;
    m_tempDate = now;
}

void HotKeyMovement::globalKeyStopUpDown() {
    if (!m_isMoving)
        return;
    stop();
    m_tempDate = Scheduler::instance().now();
}

void HotKeyMovement::stop() {
    m_claim.release();
    reset();
}

void HotKeyMovement::reset() {
    m_silence.cancel();
    m_isMoving = false;
    m_tempHeight = 0.0f;
}

} // namespace ostrel
