#pragma once

#include "widgets/OMImageButton.h"

namespace ostrel {

class HoldGuard;

// The Up and Down hold buttons: the desk moves exactly while the button is held, so press and
// release are reported at once, and the release is reported wherever the pointer is by then
// (dragging off the button must not leave the desk moving). When the window system takes the
// release away (a popup, a modal sheet, the window hidden, the focus lost), the button lets go
// by itself.
//
// From the keyboard, Space, Enter or Return on the focused button hold it exactly as long as the
// key is down: the keyboard's auto-repeat neither releases nor presses again, and Escape, any
// second key or the focus moving away lets go.
//
// On X11, Qt tells a repeated key's release from a real one only when the repeated press has
// already arrived; when it has not, the release comes as a real one and the press a moment
// later. A release therefore takes effect kRepeatGrace later unless the same key is pressed again
// by then, so that a repeating key neither stops the desk nor starts it again.
class HomeFunctionBtn : public OMImageButton {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kRepeatGrace{30};

    explicit HomeFunctionBtn(const QString& imageName, QWidget* parent = nullptr);

signals:
    void touchDwon(ostrel::HomeFunctionBtn* button);
    void touchUp(ostrel::HomeFunctionBtn* button);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void hold();
    void letGo();

    HoldGuard* m_guard;
    int m_holdingKey = 0;     // the key that holds the button, 0 when none does
    bool m_releasing = false; // its release waits out kRepeatGrace
    TimerHandle m_release;
};

} // namespace ostrel
