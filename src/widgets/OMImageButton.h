#pragma once

#include <QAbstractButton>
#include <QColor>

namespace ostrel {

// A flat button that is just a picture from OMImage, drawn centred at the largest size that keeps
// its proportions, on an optional rounded background (used for hover feedback), optionally turned
// about its centre (the settings gear, the refresh arrow).
class OMImageButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit OMImageButton(const QString& imageName = {}, QWidget* parent = nullptr);

    QString imageName() const { return m_imageName; }
    void setImageName(const QString& name);

    QColor backgroundColor() const { return m_background; }
    // An invalid colour clears the background.
    void setBackgroundColor(const QColor& color);

    qreal rotation() const { return m_rotation; }
    // Degrees, clockwise on screen.
    void setRotation(qreal degrees);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_imageName;
    QColor m_background;
    qreal m_rotation = 0.0;
};

} // namespace ostrel
