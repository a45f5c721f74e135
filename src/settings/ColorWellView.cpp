#include "settings/ColorWellView.h"

#include <QMouseEvent>
#include <QPainter>

namespace ostrel {

ColorWellView::ColorWellView(QWidget* parent) : QWidget(parent) {
    setCursor(Qt::CrossCursor);
    setMinimumSize(160, 80);
}

// Pixel by pixel, so the middle row holds fully saturated colours with no blending.
const QImage& ColorWellView::colorField(const QSize& size) const {
    if (m_colorField.size() == size)
        return m_colorField;
    m_colorField = QImage(size, QImage::Format_RGB32);
    const int half = std::max(1, size.height() / 2);
    const float hueSpan = float(std::max(1, size.width() - 1));
    for (int y = 0; y < size.height(); ++y) {
        const float saturation = y < half ? float(y) / float(half) : 1.0f;
        const float value = y < half ? 1.0f : 1.0f - float(y - half) / float(half);
        for (int x = 0; x < size.width(); ++x) {
            const float hue = float(x) / hueSpan * (359.0f / 360.0f);
            m_colorField.setPixelColor(x, y, QColor::fromHsvF(hue, saturation, value));
        }
    }
    return m_colorField;
}

void ColorWellView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawImage(0, 0, colorField(size()));
    if (!m_mark || m_grabbing)
        return;
    constexpr qreal kMarkRadius = 7.0;
    const QPointF centre(m_mark->x() * width(), m_mark->y() * height());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 3));
    painter.drawEllipse(centre, kMarkRadius, kMarkRadius);
    painter.setPen(QPen(QColor(0x20, 0x24, 0x2A), 1));
    painter.drawEllipse(centre, kMarkRadius + 2, kMarkRadius + 2);
}

void ColorWellView::clearMark() {
    m_mark.reset();
    update();
}

// What is on screen decides, so the pick matches whatever the view draws.
QColor ColorWellView::colorAt(const QPoint& point) {
    if (!rect().contains(point))
        return {};
    m_grabbing = true;
    const QImage drawn = grab().toImage();
    m_grabbing = false;
    const QPoint pixel = (QPointF(point) * drawn.devicePixelRatio()).toPoint();
    return drawn.valid(pixel) ? drawn.pixelColor(pixel) : QColor();
}

void ColorWellView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    const QPoint point = event->position().toPoint();
    if (const QColor color = colorAt(point); color.isValid()) {
        m_mark = QPointF(qreal(point.x()) / width(), qreal(point.y()) / height());
        update();
        emit colorSelected(color);
    }
}

} // namespace ostrel
