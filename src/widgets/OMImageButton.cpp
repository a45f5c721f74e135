#include "widgets/OMImageButton.h"

#include "widgets/OMImage.h"

#include <QPainter>

namespace ostrel {

OMImageButton::OMImageButton(const QString& imageName, QWidget* parent)
    : QAbstractButton(parent), m_imageName(imageName) {
    setCursor(Qt::PointingHandCursor);
}

void OMImageButton::setImageName(const QString& name) {
    if (name == m_imageName)
        return;
    m_imageName = name;
    updateGeometry();
    update();
}

void OMImageButton::setBackgroundColor(const QColor& color) {
    m_background = color;
    update();
}

void OMImageButton::setRotation(qreal degrees) {
    m_rotation = degrees;
    update();
}

QSize OMImageButton::sizeHint() const {
    const QSizeF natural = OMImage::naturalSize(m_imageName);
    return natural.isEmpty() ? QSize(24, 24) : natural.toSize();
}

void OMImageButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_background.isValid()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_background);
        painter.drawRoundedRect(rect(), 6, 6);
    }
    const QSizeF natural = OMImage::naturalSize(m_imageName);
    if (natural.isEmpty())
        return;
    const QSizeF fitted = natural.scaled(QSizeF(size()), Qt::KeepAspectRatio);
    const QPointF centre = QRectF(rect()).center();
    painter.translate(centre);
    painter.rotate(m_rotation);
    OMImage::render(painter, m_imageName,
                    QRectF(QPointF(-fitted.width() / 2, -fitted.height() / 2), fitted));
}

} // namespace ostrel
