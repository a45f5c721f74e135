#include "widgets/OMVerticalCenterLabel.h"

#include <QPainter>

namespace ostrel {

OMVerticalCenterLabel::OMVerticalCenterLabel(const QString& text, QWidget* parent)
    : QWidget(parent), m_text(text) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    updateToolTip();
}

void OMVerticalCenterLabel::setText(const QString& text) {
    m_text = text;
    updateToolTip();
    updateGeometry();
    update();
}

void OMVerticalCenterLabel::setAlignment(Qt::Alignment horizontal) {
    m_alignment = horizontal & Qt::AlignHorizontal_Mask;
    update();
}

QString OMVerticalCenterLabel::shownText() const {
    return fontMetrics().elidedText(m_text, Qt::ElideRight, width());
}

QSize OMVerticalCenterLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(m_text), fontMetrics().height()};
}

QSize OMVerticalCenterLabel::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance(QStringLiteral("…")), fontMetrics().height()};
}

void OMVerticalCenterLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawText(rect(), int(m_alignment | Qt::AlignVCenter), shownText());
}

void OMVerticalCenterLabel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    updateToolTip();
}

void OMVerticalCenterLabel::updateToolTip() {
    setToolTip(shownText() == m_text ? QString() : m_text);
}

} // namespace ostrel
