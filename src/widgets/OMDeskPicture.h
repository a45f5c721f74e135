#pragma once

#include <QStringList>
#include <QWidget>

namespace ostrel {

// The desk drawn at its current height from three pictures of one model: the top (tabletop and
// upper leg stage), the middle leg stage and the bottom (lower leg stage and feet). At full height
// the layers sit as drawn; lowering the desk pushes the top and middle layers down by the given
// offsets (in picture points), so the leg stages slide into each other. The bottom layer is drawn
// last because the stages above it slide behind its outer sleeve.
class OMDeskPicture : public QWidget {
    Q_OBJECT
public:
    // The model every unknown model name is drawn as.
    static constexpr const char* kFallbackModel = "D5";

    explicit OMDeskPicture(const QString& model = QString::fromLatin1(kFallbackModel),
                           QWidget* parent = nullptr);

    QString model() const { return m_model; }
    void setModel(const QString& model);
    // Top, middle and bottom picture names of the model shown.
    QStringList layerNames() const;

    void setLayerOffsets(qreal top, qreal middle);
    qreal topOffset() const { return m_topOffset; }
    qreal middleOffset() const { return m_middleOffset; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_model;
    qreal m_topOffset = 0.0;
    qreal m_middleOffset = 0.0;
};

} // namespace ostrel
