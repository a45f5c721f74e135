#include "widgets/OMImageButton.h"

#include "widgets/OMImage.h"

#include <QEasingCurve>
#include <QMouseEvent>
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

void OMImageButton::turnTo(qreal degrees, Scheduler::Duration duration,
                           std::function<void()> finished) {
    constexpr Scheduler::Duration frame{16};
    m_turn.cancel();
    auto& scheduler = Scheduler::instance();
    const qreal from = m_rotation;
    const Scheduler::Duration start = scheduler.now();
    m_turn = scheduler.every(frame, this, [=, this, &scheduler] {
        const auto elapsed = scheduler.now() - start;
        const qreal progress = duration.count() > 0
                                   ? qMin(1.0, qreal(elapsed.count()) / qreal(duration.count()))
                                   : 1.0;
        setRotation(from + (degrees - from) *
                               QEasingCurve(QEasingCurve::InOutQuad).valueForProgress(progress));
        if (progress < 1.0)
            return;
        m_turn.cancel();
        if (finished)
            finished();
    });
}

bool OMImageButton::isLeftButton(QMouseEvent* event) {
    const bool left = event->button() == Qt::LeftButton;
    event->setAccepted(left);
    return left;
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
