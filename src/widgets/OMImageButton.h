#pragma once

#include "core/Scheduler.h"

#include <QAbstractButton>
#include <QColor>
#include <functional>

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
    // Turns to `degrees` over `duration`, easing in and out, then calls `finished`. A new turn
    // starts from the angle reached and replaces the one under way, whose `finished` never runs.
    void turnTo(qreal degrees, Scheduler::Duration duration, std::function<void()> finished = {});

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    // Press and release handlers act on the left button only; any other is passed on (ignored).
    static bool isLeftButton(QMouseEvent* event);

private:
    QString m_imageName;
    QColor m_background;
    qreal m_rotation = 0.0;
    TimerHandle m_turn;
};

} // namespace ostrel
