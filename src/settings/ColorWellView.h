#pragma once

#include <QImage>
#include <QWidget>
#include <optional>

namespace ostrel {

// A field of colours to pick from: hue from left to right, white at the top, the pure colour in
// the middle row and black at the bottom. A click takes the colour of the pixel under the
// pointer, as drawn, and marks the place with a ring until the colour is no longer the one in use.
class ColorWellView : public QWidget {
    Q_OBJECT
public:
    explicit ColorWellView(QWidget* parent = nullptr);

    QSize sizeHint() const override { return {300, 140}; }
    // The colour drawn at `point`, or an invalid colour outside the view.
    QColor colorAt(const QPoint& point);
    // Where the colour in use was picked, as a fraction of the view; none when it was not here.
    std::optional<QPointF> mark() const { return m_mark; }
    void clearMark();

signals:
    void colorSelected(const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    const QImage& colorField(const QSize& size) const;

    mutable QImage m_colorField;
    std::optional<QPointF> m_mark;
    bool m_grabbing = false; // the mark is no colour to pick
};

} // namespace ostrel
