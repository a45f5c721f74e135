#pragma once

#include "session/OMSheetWindow.h"

class QPushButton;

namespace ostrel {

// How presets are saved on the desk itself: a picture of the key sequence and a button that
// closes the sheet and asks for the presets page, where they can be customised; its close button
// and Escape close it without going anywhere. One window, reused.
class HeightSaveHelpVC : public OMSheetWindow {
    Q_OBJECT
public:
    static HeightSaveHelpVC* present(QWidget* host);

    explicit HeightSaveHelpVC(QWidget* parent = nullptr);

    QPushButton* customizeButton() const { return m_customize; }
    QPushButton* closeButton() const { return m_close; }

signals:
    void customizeRequested();

private:
    QPushButton* m_customize;
    QPushButton* m_close;
};

} // namespace ostrel
