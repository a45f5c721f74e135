#include "widgets/OMHoverButton.h"

namespace ostrel {

void OMHoverButton::mousePressEvent(QMouseEvent* event) {
    if (!isLeftButton(event))
        return;
    setDown(true);
    auto& scheduler = Scheduler::instance();
    m_longPressCheck = scheduler.after(kLongPressDelay, this, [this] {
        m_longPress = true;
        emit longHoverPress(this);
    });
    scheduler.after(kReportDelay, this, [this] { reportPress(); });
}

void OMHoverButton::mouseReleaseEvent(QMouseEvent* event) {
    if (!isLeftButton(event))
        return;
    setDown(false);
    m_longPressCheck.cancel();
    Scheduler::instance().after(kReportDelay, this, [this] { reportRelease(); });
}

void OMHoverButton::reportPress() {
    if (!m_longPress)
        emit touchHoverDwon(this);
}

void OMHoverButton::reportRelease() {
    // Read when due, not at mouse up: the press report between them (0.7 s after mouse down)
    // must still see a long press that was released after 0.5 s.
    const bool wasLongPress = m_longPress;
    m_longPress = false;
    if (wasLongPress)
        emit longHoverPressEnd(this);
    else
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
