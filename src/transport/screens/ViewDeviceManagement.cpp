#include "transport/screens/ViewDeviceManagement.h"

#include "transport/screens/ClickableRowList.h"
#include "transport/screens/DeviceManagerRowView.h"
#include "transport/screens/ViewDeviceDetail.h"
#include "widgets/OMRotatingImage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <utility>

namespace ostrel {

namespace {

QLabel* sectionLabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setStyleSheet(QStringLiteral("color: #8a8f98; padding: 10px 4px 4px 4px;"));
    return label;
}

} // namespace

ViewDeviceManagement::ViewDeviceManagement(DevicePageHost host,
                                           DeviceManagement::SessionHooks hooks)
    : DevicePage(std::move(host), new DeviceManagement(std::move(hooks)), tr("Device management")),
      m_labelSection(new QLabel(tr("Devices"))),
      m_imageRefresh(new OMRotatingImage(QStringLiteral("connect_refresh"))),
      m_tableDevices(new ClickableRowList) {
    management()->setParent(this);
    QFont font = m_labelSection->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.05);
    m_labelSection->setFont(font);
    m_imageRefresh->setFixedSize(22, 22);
    connect(m_imageRefresh, &OMRotatingImage::clicked, this, &ViewDeviceManagement::actionRefresh);

    auto* header = new QHBoxLayout;
    header->addWidget(m_labelSection, 1);
    header->addWidget(m_imageRefresh);
    contentLayout()->addLayout(header);
    contentLayout()->addWidget(m_tableDevices, 1);

    DeviceManagement* devices = management();
    connect(devices, &DeviceManagement::devicesChanged, this, &ViewDeviceManagement::reloadData);
    connect(devices, &DeviceManagement::scanningChanged, this, [this](bool scanning) {
        if (scanning)
            m_imageRefresh->startRotating();
        else
            m_imageRefresh->stopRotating();
    });
    reloadData();
    actionRefresh();
}

QString ViewDeviceManagement::sectionText() const {
    return m_labelSection->text();
}

bool ViewDeviceManagement::isRefreshRotating() const {
    return m_imageRefresh->isRotating();
}

void ViewDeviceManagement::actionRefresh() {
    management()->blueToothStartScan();
}

namespace {

QString deskNameOf(const DeviceManagerRowView* row) {
    return row->record().value(QStringLiteral("bluetoothName")).toString();
}

} // namespace

// The rows are rebuilt whenever the scan reports; the keyboard stays on the same desk's row.
QString ViewDeviceManagement::focusedDesk() const {
    for (const DeviceManagerRowView* row : m_pairedRows + m_unPairedRows) {
        if (row->hasFocus())
            return deskNameOf(row);
    }
    return {};
}

void ViewDeviceManagement::reloadData() {
    const QString focused = focusedDesk();
    // Later, not now: the list may change from inside a click on one of its rows.
    const auto discard = [](auto& widgets) {
        for (QWidget* widget : std::as_const(widgets)) {
            widget->hide();
            widget->deleteLater();
        }
        widgets.clear();
    };
    discard(m_headings);
    discard(m_pairedRows);
    discard(m_unPairedRows);

    const auto addSection = [this, &focused](const QString& heading,
                                             const QList<QVariantMap>& records, bool paired,
                                             QList<DeviceManagerRowView*>& rows) {
        if (records.isEmpty())
            return;
        m_headings.append(sectionLabel(heading));
        m_tableDevices->addHeading(m_headings.last());
        for (const QVariantMap& record : records) {
            auto* row = new DeviceManagerRowView(record, paired);
            connect(row, &ClickableRow::clicked, this,
                    [this, row, paired] { actionSelectRow(row, paired); });
            m_tableDevices->addRow(row);
            rows.append(row);
            if (!focused.isEmpty() && deskNameOf(row) == focused) {
                row->show();
                row->setFocus(Qt::OtherFocusReason);
            }
        }
    };
    addSection(tr("My desks"), management()->arrayPaired(), true, m_pairedRows);
    addSection(tr("Other desks nearby"), management()->arrayUnPaired(), false, m_unPairedRows);
}

void ViewDeviceManagement::actionSelectRow(const DeviceManagerRowView* row, bool paired) {
    const QString name = row->record().value(QStringLiteral("bluetoothName")).toString();
    if (paired)
        host().push(new ViewDeviceDetail(host(), management(), name));
    else
        management()->actionConnectWithBluetoothName(name);
}

} // namespace ostrel
