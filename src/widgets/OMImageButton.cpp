#include "widgets/OMImageButton.h"

#include "widgets/OMAppStyle.h"
#include "widgets/OMImage.h"

#include <QEasingCurve>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace ostrel {

OMImageButton::OMImageButton(const QString& imageName, QWidget* parent)
    : QAbstractButton(parent), m_imageName(imageName) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
}

void OMImageButton::setRound(bool round) {
    m_round = round;
    update();
}

void OMImageButton::setActive(bool active) {
    if (active == m_active)
        return;
    m_active = active;
    update();
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

bool OMImageButton::isPressKey(const QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Enter:
    case Qt::Key_Return:
        return true;
    default:
        return false;
    }
}

void OMImageButton::keyPressEvent(QKeyEvent* event) {
    if (!OMAppStyle::clickOnEnter(this, event))
        QAbstractButton::keyPressEvent(event);
}

qreal OMImageButton::cornerRadius() const {
    constexpr qreal kSquareRadius = 6.0;
    return m_round ? qMin(width(), height()) / 2.0 : kSquareRadius;
}

QSize OMImageButton::sizeHint() const {
    const QSizeF natural = OMImage::naturalSize(m_imageName);
    return natural.isEmpty() ? QSize(24, 24) : natural.toSize();
}

void OMImageButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    constexpr qreal kDisabledOpacity = 0.4;
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);
    QRectF shape(rect());
    if (m_round) {
        const qreal side = qMin(width(), height());
        shape.setSize({side, side});
        shape.moveCenter(QRectF(rect()).center());
    }
    const QColor background =
        looksPressed() ? palette().color(QPalette::Highlight).lighter(170) : m_background;
    if (background.isValid()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(background);
        painter.drawRoundedRect(shape, cornerRadius(), cornerRadius());
    }
    const QSizeF natural = OMImage::naturalSize(m_imageName);
    if (!natural.isEmpty())
        paintImage(painter, natural);
    // Over the picture, which may fill the whole button.
    OMAppStyle::drawFocusRing(painter, this, shape.toAlignedRect(), cornerRadius());
}

void OMImageButton::paintImage(QPainter& painter, const QSizeF& natural) const {
    painter.save();
    // Pressed, the picture sinks a little, as a physical key would.
    constexpr qreal kPressedScale = 0.92;
    const QSizeF fitted = natural.scaled(QSizeF(size()), Qt::KeepAspectRatio) *
                          (looksPressed() ? kPressedScale : 1.0);
    const QPointF centre = QRectF(rect()).center();
    painter.translate(centre);
    painter.rotate(m_rotation);
    OMImage::render(painter, m_imageName,
                    QRectF(QPointF(-fitted.width() / 2, -fitted.height() / 2), fitted));
    painter.restore();
}

} // namespace ostrel
