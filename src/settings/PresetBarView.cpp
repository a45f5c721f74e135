#include "settings/PresetBarView.h"

#include <QPainter>
#include <algorithm>

namespace ostrel {

namespace {

const QColor kTrack(0xE6, 0xE8, 0xEB);
const QColor kFill(0x2F, 0x80, 0xED);

} // namespace

PresetBarView::PresetBarView(QWidget* parent) : QWidget(parent) {
    setFixedHeight(sizeHint().height());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PresetBarView::setFraction(double fraction) {
    m_fraction = std::clamp(fraction, 0.0, 1.0);
    update();
}

void PresetBarView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF track = rect();
    const qreal radius = track.height() / 2;
    painter.setBrush(kTrack);
    painter.drawRoundedRect(track, radius, radius);
    if (m_fraction > 0.0) {
        painter.setBrush(kFill);
        painter.drawRoundedRect(
            QRectF(track.topLeft(), QSizeF(track.width() * m_fraction, track.height())), radius,
            radius);
    }
}

} // namespace ostrel
