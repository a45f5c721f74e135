#include "settings/ActivityTimeline.h"

#include <QPainter>
#include <algorithm>

namespace ostrel {

namespace {

constexpr double kDayMs = 24.0 * 60 * 60 * 1000;
constexpr int kBandHeight = 22;

} // namespace

ActivityTimeline::ActivityTimeline(QWidget* parent) : QWidget(parent) {
    setMinimumHeight(sizeHint().height());
}

void ActivityTimeline::setIntervals(const QList<ActivityInterval>& intervals) {
    m_intervals = intervals;
    update();
}

QColor ActivityTimeline::postureColor(Posture posture) {
    switch (posture) {
    case Posture::Sitting:
        return QColor(0x8F, 0xB8, 0xF0);
    case Posture::Standing:
        return QColor(0x2E, 0xA0, 0x5A);
    case Posture::Away:
        return QColor(0xC9, 0xC9, 0xC9);
    case Posture::Unknown:
        break;
    }
    return Qt::transparent;
}

void ActivityTimeline::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF band(0, 0, width() - 1, kBandHeight);
    painter.setPen(palette().mid().color());
    painter.setBrush(palette().base());
    painter.drawRect(band);
    painter.setPen(Qt::NoPen);
    for (const ActivityInterval& interval : m_intervals) {
        const QDateTime start = interval.start.toLocalTime();
        const double from = double(QDateTime(interval.day, QTime(0, 0)).msecsTo(start)) / kDayMs;
        const double length = double(interval.durationMs) / kDayMs;
        painter.setBrush(postureColor(interval.posture));
        painter.drawRect(QRectF(band.left() + std::clamp(from, 0.0, 1.0) * band.width(), band.top(),
                                std::clamp(length, 0.0, 1.0) * band.width(), band.height()));
    }
    painter.setPen(palette().text().color());
    for (int hour = 0; hour <= 24; hour += 6) {
        const double x = band.left() + band.width() * hour / 24.0;
        painter.drawLine(QPointF(x, band.bottom()), QPointF(x, band.bottom() + 4));
        const QString label = QStringLiteral("%1:00").arg(hour);
        const double textWidth = painter.fontMetrics().horizontalAdvance(label);
        painter.drawText(QPointF(std::clamp(x - textWidth / 2, 0.0, width() - textWidth),
                                 band.bottom() + 6 + painter.fontMetrics().ascent()),
                         label);
    }
}

} // namespace ostrel
