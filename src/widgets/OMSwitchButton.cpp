#include "widgets/OMSwitchButton.h"

namespace ostrel {

OMSwitchButton::OMSwitchButton(QWidget* parent) : OMImageButton(imageNameFor(false), parent) {
    setCheckable(true);
    connect(this, &QAbstractButton::toggled, this,
            [this](bool on) { setImageName(imageNameFor(on)); });
}

QString OMSwitchButton::imageNameFor(bool on) {
    return on ? QStringLiteral("setting_switchopen") : QStringLiteral("setting_switchclose");
}

} // namespace ostrel
