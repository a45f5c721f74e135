#pragma once

#include "widgets/OMImageButton.h"

namespace ostrel {

// The Up and Down hold buttons: the desk moves exactly while the button is held, so press and
// release are reported at once, and the release is reported wherever the pointer is by then
// (dragging off the button must not leave the desk moving).
class HomeFunctionBtn : public OMImageButton {
    Q_OBJECT
public:
    using OMImageButton::OMImageButton;

signals:
    void touchDwon(ostrel::HomeFunctionBtn* button);
    void touchUp(ostrel::HomeFunctionBtn* button);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};

} // namespace ostrel
