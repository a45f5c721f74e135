#include "transport/screens/ClickableRow.h"

#include "widgets/OMAppStyle.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace ostrel {

ClickableRow::ClickableRow(int height, QWidget* parent) : QWidget(parent) {
    setFixedHeight(height);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
}

void ClickableRow::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Enter:
    case Qt::Key_Return:
        if (!event->isAutoRepeat())
            emit clicked();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void ClickableRow::mouseReleaseEvent(QMouseEvent* event) {
    // A press dragged off the row before release is a change of mind, not a click.
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit clicked();
    else
        QWidget::mouseReleaseEvent(event);
}

void ClickableRow::enterEvent(QEnterEvent* event) {
    setHovered(true);
    QWidget::enterEvent(event);
}

void ClickableRow::leaveEvent(QEvent* event) {
    setHovered(false);
    QWidget::leaveEvent(event);
}

void ClickableRow::setHovered(bool hovered) {
    m_hovered = hovered;
    update();
}

void ClickableRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_hovered ? QColor(0xE3, 0xEB, 0xF7) : QColor(0xF4, 0xF5, 0xF7));
    const QRectF card = QRectF(rect()).adjusted(0.5, 3.0, -0.5, -3.0);
    painter.drawRoundedRect(card, 8, 8);
    OMAppStyle::drawFocusRing(painter, this, card.toAlignedRect(), 8);
}

} // namespace ostrel
