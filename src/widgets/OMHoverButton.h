#pragma once

#include "core/Scheduler.h"
#include "widgets/OMImageButton.h"

namespace ostrel {

class HoldGuard;

// The preset and settings buttons of the desk control screen. A press is reported late so that a
// long press can replace it: the long-press check runs 0.5 s after mouse down, the press itself
// 0.7 s after mouse down (unless it became a long press) and the release 0.7 s after mouse up. A
// short click therefore arrives as touchHoverDwon / touchHoverUp about the click's length apart,
// shifted by 0.7 s. Every delay runs on Scheduler::instance().
//
// When the window system takes the release away (a popup, a modal sheet such as the one a long
// press opens, the window hidden, the focus lost), the button forgets the press at once: pending
// reports are dropped and a reported press is released now, so the next click starts afresh.
//
// Space, Enter or Return on the focused button press it as the mouse does, for as long as the key
// is down (auto-repeat is not a new press); Escape or the focus moving away forgets the press.
class OMHoverButton : public OMImageButton {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kLongPressDelay{500};
    static constexpr Scheduler::Duration kReportDelay{700};

    explicit OMHoverButton(const QString& imageName = {}, QWidget* parent = nullptr);

    bool isLongPress() const { return m_longPress; }

signals:
    void touchHoverDwon(ostrel::OMHoverButton* button);
    void touchHoverUp(ostrel::OMHoverButton* button);
    void longHoverPress(ostrel::OMHoverButton* button);
    void longHoverPressEnd(ostrel::OMHoverButton* button);
    void hoverStart(ostrel::OMHoverButton* button);
    void hoverEnd(ostrel::OMHoverButton* button);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void press();
    void release();
    // Runs `report` after `delay` unless the press is forgotten first.
    void afterDelay(Scheduler::Duration delay, void (OMHoverButton::*report)());
    void checkLongPress();
    void reportPress();
    void reportRelease();
    void forgetPress();

    HoldGuard* m_guard;
    bool m_longPress = false;
    bool m_pressReported = false; // touchHoverDwon went out and its touchHoverUp has not
    int m_pendingReleases = 0;
    unsigned m_generation = 0; // bumped to drop every pending report at once
    TimerHandle m_longPressCheck;
    int m_pressingKey = 0; // the key that presses the button, 0 when none does
};

} // namespace ostrel
