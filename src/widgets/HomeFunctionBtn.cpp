#include "widgets/HomeFunctionBtn.h"

#include "widgets/HoldGuard.h"

#include <QKeyEvent>

namespace ostrel {

HomeFunctionBtn::HomeFunctionBtn(const QString& imageName, QWidget* parent)
    : OMImageButton(imageName, parent), m_guard(new HoldGuard(this)) {
    connect(m_guard, &HoldGuard::interrupted, this, &HomeFunctionBtn::letGo);
}

void HomeFunctionBtn::mousePressEvent(QMouseEvent* event) {
    if (!isLeftButton(event))
        return;
    hold();
}

void HomeFunctionBtn::mouseReleaseEvent(QMouseEvent* event) {
    // A release after the button let go by itself is stale: a key held since by other means
    // (a hot key) is not this button's to end.
    if (!isLeftButton(event) || !isDown())
        return;
    letGo();
}

void HomeFunctionBtn::keyPressEvent(QKeyEvent* event) {
    if (event->key() == m_holdingKey && (event->isAutoRepeat() || m_releasing)) {
        m_release.cancel(); // still the same press
        m_releasing = false;
        return;
    }
    if (isDown()) {
        letGo(); // Escape or a second key ends the hold
        return;
    }
    if (!isPressKey(event) || event->isAutoRepeat()) {
        OMImageButton::keyPressEvent(event);
        return;
    }
    m_holdingKey = event->key();
    hold();
}

void HomeFunctionBtn::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != m_holdingKey) {
        event->ignore();
        return;
    }
    if (event->isAutoRepeat() || !isDown() || m_releasing)
        return;
    m_releasing = true;
    m_release = Scheduler::instance().after(kRepeatGrace, this, [this] {
        if (std::exchange(m_releasing, false))
            letGo();
    });
}

// Whatever took the focus takes the keys too, so no release will come; the base class would only
// draw the button up without telling anyone.
void HomeFunctionBtn::focusOutEvent(QFocusEvent* event) {
    if (isDown())
        letGo();
    OMImageButton::focusOutEvent(event);
}

void HomeFunctionBtn::hold() {
    setDown(true);
    m_guard->arm();
    emit touchDwon(this);
}

void HomeFunctionBtn::letGo() {
    m_release.cancel();
    m_releasing = false;
    m_holdingKey = 0;
    m_guard->disarm();
    setDown(false);
    emit touchUp(this);
}

} // namespace ostrel
