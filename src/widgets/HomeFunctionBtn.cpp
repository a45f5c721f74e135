#include "widgets/HomeFunctionBtn.h"

#include "widgets/HoldGuard.h"

namespace ostrel {

HomeFunctionBtn::HomeFunctionBtn(const QString& imageName, QWidget* parent)
    : OMImageButton(imageName, parent), m_guard(new HoldGuard(this)) {
    connect(m_guard, &HoldGuard::interrupted, this, &HomeFunctionBtn::letGo);
}

void HomeFunctionBtn::mousePressEvent(QMouseEvent* event) {
    if (!isLeftButton(event))
        return;
    setDown(true);
    m_guard->arm();
    emit touchDwon(this);
}

void HomeFunctionBtn::mouseReleaseEvent(QMouseEvent* event) {
    // A release after the button let go by itself is stale: a key held since by other means
    // (a hot key) is not this button's to end.
    if (!isLeftButton(event) || !isDown())
        return;
    letGo();
}

void HomeFunctionBtn::letGo() {
    m_guard->disarm();
    setDown(false);
    emit touchUp(this);
}

} // namespace ostrel
