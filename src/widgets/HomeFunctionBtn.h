#pragma once

#include "widgets/OMImageButton.h"

namespace ostrel {

class HoldGuard;

// The Up and Down hold buttons: the desk moves exactly while the button is held, so press and
// release are reported at once, and the release is reported wherever the pointer is by then
// (dragging off the button must not leave the desk moving). When the window system takes the
// release away (a popup, a modal sheet, the window hidden, the focus lost), the button lets go
// by itself.
class HomeFunctionBtn : public OMImageButton {
    Q_OBJECT
public:
    explicit HomeFunctionBtn(const QString& imageName, QWidget* parent = nullptr);

signals:
    void touchDwon(ostrel::HomeFunctionBtn* button);
    void touchUp(ostrel::HomeFunctionBtn* button);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void letGo();

    HoldGuard* m_guard;
};

} // namespace ostrel
