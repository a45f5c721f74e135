#pragma once

#include "transport/screens/DevicePage.h"

#include <functional>

class QLineEdit;

namespace ostrel {

// Renames a desk: the "Name" field and "Confirm". A name is handed on and the page closes; a
// blank field is ignored and the page stays, its Confirm greyed with a tooltip saying why.
class ViewNameEdit : public DevicePage {
    Q_OBJECT
public:
    // Long enough for a room and an owner, short enough for one line of the device list.
    static constexpr int kMaxNameLength = 24;
    using RenameCallback = std::function<void(const QString& name)>;

    ViewNameEdit(DevicePageHost host, const QString& deviceName, RenameCallback rename);

    QLineEdit* nameField() const { return m_field; }
    QPushButton* confirmButton() const { return m_confirm; }

    void actionConfirm();

private:
    void refreshConfirm();

    RenameCallback m_rename;
    QLineEdit* m_field;
    QPushButton* m_confirm;
};

} // namespace ostrel
