#pragma once

#include "transport/screens/DeviceManagement.h"
#include "transport/screens/DevicePage.h"

#include <QList>

class QLabel;

namespace ostrel {

class ClickableRowList;
class DeviceManagerRowView;
class OMRotatingImage;

// The device list: the bound desks first, each marked online or offline, then the desks in
// range that are not bound. A bound desk opens its details; a desk in range that is not bound
// connects on a click. It scans as it opens and whenever the refresh picture is clicked.
class ViewDeviceManagement : public DevicePage {
    Q_OBJECT
public:
    ViewDeviceManagement(DevicePageHost host, DeviceManagement::SessionHooks hooks);

    DeviceManagement& deviceManagement() const { return *management(); }
    const QList<DeviceManagerRowView*>& pairedRows() const { return m_pairedRows; }
    const QList<DeviceManagerRowView*>& unPairedRows() const { return m_unPairedRows; }
    QString sectionText() const;
    bool isRefreshRotating() const;

    void actionRefresh();

private:
    QString focusedDesk() const;
    void reloadData();
    void actionSelectRow(const DeviceManagerRowView* row, bool paired);

    QLabel* m_labelSection;
    OMRotatingImage* m_imageRefresh;
    ClickableRowList* m_tableDevices;
    QList<DeviceManagerRowView*> m_pairedRows;
    QList<DeviceManagerRowView*> m_unPairedRows;
    QList<QWidget*> m_headings;
};

} // namespace ostrel
