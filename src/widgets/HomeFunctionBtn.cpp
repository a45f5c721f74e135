#include "widgets/HomeFunctionBtn.h"

#include <QMouseEvent>

namespace ostrel {

void HomeFunctionBtn::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    setDown(true);
    emit touchDwon(this);
}

void HomeFunctionBtn::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    setDown(false);
    emit touchUp(this);
}

} // namespace ostrel
