#include "widgets/OMDeskPicture.h"

#include "widgets/OMImage.h"

#include <QPainter>

namespace ostrel {

namespace {
QStringList layersOf(const QString& model) {
    return {QStringLiteral("control_%1_desktop").arg(model),
            QStringLiteral("control_%1_deskmid").arg(model),
            QStringLiteral("control_%1_deskbottom").arg(model)};
}
} // namespace

OMDeskPicture::OMDeskPicture(const QString& model, QWidget* parent) : QWidget(parent) {
    setModel(model);
}

void OMDeskPicture::setModel(const QString& model) {
    m_model =
        OMImage::exists(layersOf(model).constFirst()) ? model : QString::fromLatin1(kFallbackModel);
    update();
}

QStringList OMDeskPicture::layerNames() const {
    return layersOf(m_model);
}

void OMDeskPicture::setLayerOffsets(qreal top, qreal middle) {
    // Height reports arrive 20 times a second while the desk stands still: repaint on change.
    if (qFuzzyCompare(top, m_topOffset) && qFuzzyCompare(middle, m_middleOffset))
        return;
    m_topOffset = top;
    m_middleOffset = middle;
    update();
}

QSize OMDeskPicture::sizeHint() const {
    return OMImage::naturalSize(layerNames().constFirst()).toSize();
}

void OMDeskPicture::paintEvent(QPaintEvent*) {
    const QStringList layers = layerNames();
    const QSizeF natural = OMImage::naturalSize(layers.constFirst());
    if (natural.isEmpty())
        return;
    // One scale for all three layers and their offsets, so the stages stay aligned at any size.
    const QSizeF fitted = natural.scaled(QSizeF(size()), Qt::KeepAspectRatio);
    const qreal scale = fitted.width() / natural.width();
    const QPointF origin((width() - fitted.width()) / 2, (height() - fitted.height()) / 2);

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal offsets[] = {m_topOffset, m_middleOffset, 0.0};
    for (int i = 0; i < layers.size(); ++i)
        OMImage::render(painter, layers[i],
                        QRectF(origin + QPointF(0, offsets[i] * scale), fitted));
}

} // namespace ostrel
