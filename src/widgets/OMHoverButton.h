#pragma once

#include "core/Scheduler.h"
#include "widgets/OMImageButton.h"

namespace ostrel {

// The preset and settings buttons of the desk control screen. A press is reported late so that a
// long press can replace it: the long-press check runs 0.5 s after mouse down, the press itself
// 0.7 s after mouse down (unless it became a long press) and the release 0.7 s after mouse up. A
// short click therefore arrives as touchHoverDwon / touchHoverUp about the click's length apart,
// shifted by 0.7 s. Every delay runs on Scheduler::instance().
class OMHoverButton : public OMImageButton {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kLongPressDelay{500};
    static constexpr Scheduler::Duration kReportDelay{700};

    using OMImageButton::OMImageButton;

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

private:
    void reportPress();
    void reportRelease();

    bool m_longPress = false;
    TimerHandle m_longPressCheck;
};

} // namespace ostrel
