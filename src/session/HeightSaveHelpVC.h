#pragma once

#include "session/OMSheetWindow.h"

class QPushButton;

namespace ostrel {

// How presets are saved on the desk itself: a picture of the key sequence and a button that
// closes the sheet and asks for the presets page, where they can be customised. One window,
// reused.
class HeightSaveHelpVC : public OMSheetWindow {
    Q_OBJECT
public:
    static HeightSaveHelpVC* present(QWidget* host);

    explicit HeightSaveHelpVC(QWidget* parent = nullptr);

    QPushButton* customizeButton() const { return m_customize; }

signals:
    void customizeRequested();

private:
    QPushButton* m_customize;
};

} // namespace ostrel
