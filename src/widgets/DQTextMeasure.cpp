#include "widgets/DQTextMeasure.h"

#include <QFontDatabase>
#include <QFontMetricsF>

namespace ostrel {

namespace {

constexpr qreal kUnbounded = 1e7;

QFont systemFont(qreal pointSize) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPointSizeF(pointSize);
    return font;
}

QSizeF textSize(const QFont& font, const QRectF& bounds, int flags, const QString& content) {
    if (content.isEmpty())
        return QSizeF(0, 0);
    return QFontMetricsF(font).boundingRect(bounds, flags, content).size();
}

} // namespace

qreal DQTextMeasure::getContentWidthWithFont(const QFont& font, qreal height,
                                             const QString& content) {
    return textSize(font, QRectF(0, 0, kUnbounded, height), Qt::AlignLeft | Qt::AlignTop, content)
        .width();
}

qreal DQTextMeasure::getContentWidthWithFontSize(qreal fontSize, qreal height,
                                                 const QString& content) {
    return getContentWidthWithFont(systemFont(fontSize), height, content);
}

qreal DQTextMeasure::getContentHeightWithFont(const QFont& font, qreal width,
                                              const QString& content) {
    return textSize(font, QRectF(0, 0, width, kUnbounded),
                    Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, content)
        .height();
}

qreal DQTextMeasure::getContentHeightWithFontSize(qreal fontSize, qreal width,
                                                  const QString& content) {
    return getContentHeightWithFont(systemFont(fontSize), width, content);
}

} // namespace ostrel
