#pragma once

#include "core/Scheduler.h"

#include <QAbstractButton>
#include <QColor>
#include <functional>

namespace ostrel {

// A flat button that is just a picture from OMImage, drawn centred at the largest size that keeps
// its proportions, on an optional rounded background (used for hover feedback), optionally turned
// about its centre (the settings gear, the refresh arrow). Tab reaches it (a click does not take
// the focus from where the user typed); it then wears the focus ring. Held down, or marked active
// while the key it stands for is being sent, it shows a pressed state.
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

    // A round button: background, pressed state and focus ring follow the circle.
    void setRound(bool round);
    bool isRound() const { return m_round; }

    // Shown pressed although no pointer holds it: its key is being sent.
    void setActive(bool active);
    bool isActive() const { return m_active; }
    bool looksPressed() const { return isDown() || m_active; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    // Enter and Return click a focused button as Space does.
    void keyPressEvent(QKeyEvent* event) override;
    // Press and release handlers act on the left button only; any other is passed on (ignored).
    static bool isLeftButton(QMouseEvent* event);
    // The keys that press a focused button: Space, Enter and Return.
    static bool isPressKey(const QKeyEvent* event);

private:
    qreal cornerRadius() const;
    void paintImage(QPainter& painter, const QSizeF& natural) const;

    QString m_imageName;
    QColor m_background;
    qreal m_rotation = 0.0;
    bool m_round = false;
    bool m_active = false;
    TimerHandle m_turn;
};

} // namespace ostrel
