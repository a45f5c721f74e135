#include "widgets/OMAppStyle.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>
#include <QWidget>

namespace ostrel {

namespace {

constexpr qreal kDefaultRadius = 4.0;
constexpr qreal kRingWidth = 2.0;

void paintRing(QPainter& painter, const QPalette& palette, const QRectF& rect, qreal radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(palette.color(QPalette::Highlight), kRingWidth);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    const qreal inset = kRingWidth / 2;
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

} // namespace

void OMAppStyle::install() {
    if (qobject_cast<OMAppStyle*>(QApplication::style()))
        return;
    QApplication::setStyle(new OMAppStyle);
    qApp->setStyleSheet(QStringLiteral(
        "QScrollBar:vertical { background: transparent; width: 10px; margin: 0; }"
        "QScrollBar::handle:vertical { background: #B9BFC8; border-radius: 3px;"
        " min-height: 32px; margin: 2px; }"
        "QScrollBar::handle:vertical:hover { background: #8E96A1; }"
        "QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: #F1F3F6; }"
        "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }"));
}

void OMAppStyle::drawFocusRing(QPainter& painter, const QWidget* widget, const QRect& rect,
                               qreal radius) {
    if (widget->hasFocus())
        paintRing(painter, widget->palette(), rect, radius);
}

bool OMAppStyle::clickOnEnter(QAbstractButton* button, QKeyEvent* event) {
    if (event->key() != Qt::Key_Enter && event->key() != Qt::Key_Return)
        return false;
    if (!event->isAutoRepeat())
        button->animateClick();
    return true;
}

void OMAppStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    // The desktop's own ring is often a faint dotted line; one clear ring everywhere instead.
    if (element == PE_FrameFocusRect) {
        paintRing(*painter, option->palette, option->rect, kDefaultRadius);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

} // namespace ostrel
