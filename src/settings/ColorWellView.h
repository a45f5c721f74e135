#pragma once

#include <QImage>
#include <QWidget>

namespace ostrel {

// A field of colours to pick from: hue from left to right, white at the top, the pure colour in
// the middle row and black at the bottom. A click takes the colour of the pixel under the
// pointer, as drawn.
class ColorWellView : public QWidget {
    Q_OBJECT
public:
    explicit ColorWellView(QWidget* parent = nullptr);

    QSize sizeHint() const override { return {300, 140}; }
    // The colour drawn at `point`, or an invalid colour outside the view.
    QColor colorAt(const QPoint& point);

signals:
    void colorSelected(const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    const QImage& colorField(const QSize& size) const;

    mutable QImage m_colorField;
};

} // namespace ostrel
