#pragma once

#include "widgets/OMImageButton.h"

namespace ostrel {

// An on/off switch drawn with the "setting_switchopen" / "setting_switchclose" pictures. A click
// flips it and emits toggled(); setChecked() sets it without a click, e.g. from a stored setting.
class OMSwitchButton : public OMImageButton {
    Q_OBJECT
public:
    explicit OMSwitchButton(QWidget* parent = nullptr);

    static QString imageNameFor(bool on);
};

} // namespace ostrel
