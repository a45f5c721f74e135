#pragma once

#include "transport/screens/DevicePage.h"

#include <QStringList>
#include <QVariantMap>

class QLabel;

namespace ostrel {

class ClickableRow;

// One bound desk: its name (which opens the rename page), advertised name, platform identifier
// and last connection time, and the buttons that forget the desk and switch the session to it.
class ViewDeviceDetail : public DevicePage {
    Q_OBJECT
public:
    ViewDeviceDetail(DevicePageHost host, DeviceManagement* management,
                     const QString& bluetoothName);

    const QVariantMap& record() const { return m_record; }
    ClickableRow* nameRow() const { return m_nameRow; }
    // The four values as shown: name, advertised name, identifier, last connection time.
    QStringList values() const;
    QPushButton* deleteButton() const { return m_buttonDelete; }
    QPushButton* changeButton() const { return m_buttonChange; }

    void actionDeleteDevice();
    void actionChangeDevice();
    void actionEditName();

private:
    void reloadRecord();

    QString m_bluetoothName;
    QVariantMap m_record;
    ClickableRow* m_nameRow;
    QLabel* m_name;
    QLabel* m_advertisedName;
    QLabel* m_address;
    QLabel* m_lastConnected;
    QPushButton* m_buttonDelete;
    QPushButton* m_buttonChange;
};

} // namespace ostrel
