#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace ostrel {

// Watches a held button for whatever takes its mouse release away: the button hidden or
// disabled; its window hidden, minimised or blocked by a modal window; a popup menu opening; the
// application losing the focus. Qt then never delivers the release, so the button must let go
// by itself. Armed only while a hold lasts; unarmed it filters nothing.
//
// Offscreen tests see the events but not the input grabs behind them: what the window system
// does with a pressed button is tested under X11 with real input.
class HoldGuard : public QObject {
    Q_OBJECT
public:
    explicit HoldGuard(QWidget* button);

    void arm();
    void disarm();
    bool isArmed() const { return m_armed; }

signals:
    // The hold cannot end by a release any more; the guard is disarmed when this is emitted.
    void interrupted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool endsHold(QObject* watched, const QEvent* event) const;
    void interrupt();

    QWidget* m_button;
    bool m_armed = false;
    QMetaObject::Connection m_stateWatch;
};

} // namespace ostrel
