#pragma once

#include "session/OMSheetWindow.h"

namespace ostrel {

// How presets are saved on the desk itself: a picture of the key sequence and one button that
// closes the sheet. One window, reused.
class HeightSaveHelpVC : public OMSheetWindow {
    Q_OBJECT
public:
    static HeightSaveHelpVC* present(QWidget* host);

    explicit HeightSaveHelpVC(QWidget* parent = nullptr);
};

} // namespace ostrel
