#pragma once

class QWidget;

namespace ostrel {

class DeskControlVC;

// Hangs the device pages on a control screen: they open on its view stack, and the desk
// changes they make reach its session.
class DevicePages {
public:
    static QWidget* create(DeskControlVC* fatherVC);
};

} // namespace ostrel
