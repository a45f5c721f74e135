#include "widgets/HomeFunctionBtn.h"

namespace ostrel {

void HomeFunctionBtn::mousePressEvent(QMouseEvent* event) {
    if (!isLeftButton(event))
        return;
    setDown(true);
    emit touchDwon(this);
}

void HomeFunctionBtn::mouseReleaseEvent(QMouseEvent* event) {
    if (!isLeftButton(event))
        return;
    setDown(false);
    emit touchUp(this);
}

} // namespace ostrel
