#include "widgets/OMHoverButton.h"

#include "widgets/HoldGuard.h"

#include <QKeyEvent>

namespace ostrel {

OMHoverButton::OMHoverButton(const QString& imageName, QWidget* parent)
    : OMImageButton(imageName, parent), m_guard(new HoldGuard(this)) {
    connect(m_guard, &HoldGuard::interrupted, this, &OMHoverButton::forgetPress);
}

void OMHoverButton::afterDelay(Scheduler::Duration delay, void (OMHoverButton::*report)()) {
    Scheduler::instance().after(delay, this, [this, report, generation = m_generation] {
        if (generation == m_generation)
            (this->*report)();
    });
}

void OMHoverButton::mousePressEvent(QMouseEvent* event) {
    if (isLeftButton(event))
        press();
}

void OMHoverButton::mouseReleaseEvent(QMouseEvent* event) {
    // A release after the button forgot its press belongs to no press.
    if (isLeftButton(event) && isDown())
        release();
}

void OMHoverButton::keyPressEvent(QKeyEvent* event) {
    if (event->isAutoRepeat() && event->key() == m_pressingKey)
        return;
    if (isDown() && event->key() == Qt::Key_Escape) {
        forgetPress();
        return;
    }
    if (isDown() || event->isAutoRepeat()) {
        event->ignore();
        return;
    }
    if (!isPressKey(event)) {
        OMImageButton::keyPressEvent(event);
        return;
    }
    m_pressingKey = event->key();
    press();
}

void OMHoverButton::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != m_pressingKey) {
        event->ignore();
        return;
    }
    if (event->isAutoRepeat())
        return;
    m_pressingKey = 0;
    if (isDown())
        release();
}

void OMHoverButton::focusOutEvent(QFocusEvent* event) {
    if (isDown())
        forgetPress();
    OMImageButton::focusOutEvent(event);
}

void OMHoverButton::press() {
    setDown(true);
    m_guard->arm();
    m_longPressCheck.cancel();
    m_longPressCheck =
        Scheduler::instance().after(kLongPressDelay, this, [this] { checkLongPress(); });
    afterDelay(kReportDelay, &OMHoverButton::reportPress);
}

void OMHoverButton::release() {
    setDown(false);
    m_longPressCheck.cancel();
    ++m_pendingReleases;
    afterDelay(kReportDelay, &OMHoverButton::reportRelease);
}

void OMHoverButton::checkLongPress() {
    m_longPress = true;
    emit longHoverPress(this);
}

void OMHoverButton::reportPress() {
    if (m_longPress)
        return;
    m_pressReported = true;
    emit touchHoverDwon(this);
}

void OMHoverButton::reportRelease() {
    // Read when due, not at mouse up: the press report between them (0.7 s after mouse down)
    // must still see a long press that was released after 0.5 s.
    const bool wasLongPress = m_longPress;
    m_longPress = false;
    if (--m_pendingReleases == 0 && !isDown())
        m_guard->disarm();
    if (wasLongPress) {
        emit longHoverPressEnd(this);
    } else {
        m_pressReported = false;
        emit touchHoverUp(this);
    }
}

void OMHoverButton::forgetPress() {
    ++m_generation;
    m_pressingKey = 0;
    m_longPressCheck.cancel();
    m_longPress = false;
    m_pendingReleases = 0;
    setDown(false);
    if (std::exchange(m_pressReported, false))
        emit touchHoverUp(this);
}

void OMHoverButton::enterEvent(QEnterEvent* event) {
    OMImageButton::enterEvent(event);
    emit hoverStart(this);
}

void OMHoverButton::leaveEvent(QEvent* event) {
    OMImageButton::leaveEvent(event);
    emit hoverEnd(this);
}

} // namespace ostrel
