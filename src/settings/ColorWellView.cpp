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
}

// What is on screen decides, so the pick matches whatever the view draws.
QColor ColorWellView::colorAt(const QPoint& point) {
    if (!rect().contains(point))
        return {};
    const QImage drawn = grab().toImage();
    const QPoint pixel = (QPointF(point) * drawn.devicePixelRatio()).toPoint();
    return drawn.valid(pixel) ? drawn.pixelColor(pixel) : QColor();
}

void ColorWellView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    if (const QColor color = colorAt(event->position().toPoint()); color.isValid())
        emit colorSelected(color);
}

} // namespace ostrel
