#include "transport/screens/ViewDeviceDetail.h"

#include "transport/screens/ClickableRow.h"
#include "transport/screens/DeviceManagement.h"
#include "transport/screens/ScreenPicture.h"
#include "transport/screens/ViewNameEdit.h"
#include "widgets/OMAlert.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>

namespace ostrel {

namespace {

constexpr int kNameRowHeight = 44;

QLabel* valueLabel() {
    auto* label = new QLabel;
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setStyleSheet(QStringLiteral("color: #5b6069;"));
    return label;
}

} // namespace

ViewDeviceDetail::ViewDeviceDetail(DevicePageHost host, DeviceManagement* management,
                                   const QString& bluetoothName)
    : DevicePage(std::move(host), management, tr("Device details")), m_bluetoothName(bluetoothName),
      m_nameRow(new ClickableRow(kNameRowHeight)), m_name(new QLabel),
      m_advertisedName(valueLabel()), m_address(valueLabel()), m_lastConnected(valueLabel()),
      m_buttonDelete(new QPushButton(tr("Delete device"))),
      m_buttonChange(new QPushButton(tr("Change device"))) {
    auto* nameLayout = new QHBoxLayout(m_nameRow);
    nameLayout->setContentsMargins(12, 0, 12, 0);
    nameLayout->addWidget(new QLabel(tr("Name")));
    nameLayout->addStretch();
    nameLayout->addWidget(m_name);
    nameLayout->addWidget(screenPicture(QStringLiteral("connect_arrow"), QSize(12, 12)));
    connect(m_nameRow, &ClickableRow::clicked, this, &ViewDeviceDetail::actionEditName);

    // A value too long for its line (the platform identifier) goes below its caption.
    auto* form = new QFormLayout;
    form->setContentsMargins(12, 4, 12, 4);
    form->setVerticalSpacing(14);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    form->addRow(tr("Bluetooth Device Name"), m_advertisedName);
    form->addRow(tr("Bluetooth Address"), m_address);
    form->addRow(tr("Last Connected Time"), m_lastConnected);

    connect(m_buttonDelete, &QPushButton::clicked, this, &ViewDeviceDetail::actionDeleteDevice);
    connect(m_buttonChange, &QPushButton::clicked, this, &ViewDeviceDetail::actionChangeDevice);
    m_buttonChange->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_buttonDelete);
    buttons->addWidget(m_buttonChange);

    contentLayout()->addWidget(m_nameRow);
    contentLayout()->addLayout(form);
    contentLayout()->addStretch();
    contentLayout()->addLayout(buttons);

    connect(management, &DeviceManagement::devicesChanged, this, &ViewDeviceDetail::reloadRecord);
    reloadRecord();
}

QStringList ViewDeviceDetail::values() const {
    return {m_name->text(), m_advertisedName->text(), m_address->text(), m_lastConnected->text()};
}

void ViewDeviceDetail::reloadRecord() {
    // The page keeps showing what it had once the desk is forgotten.
    if (QVariantMap stored = DeviceManagement::boundRecord(m_bluetoothName); !stored.isEmpty())
        m_record = stored;
    const auto text = [this](const char* key) {
        return m_record.value(QString::fromLatin1(key)).toString();
    };
    m_name->setText(text("deviceName"));
    m_advertisedName->setText(text("bluetoothName"));
    m_address->setText(text("bluetoothMacAddress"));
    m_lastConnected->setText(text("lastConnectionTime"));
    // Only a desk seen in range can be switched to, and the current one already is.
    const bool current = DeviceManagement::isCurrentDesk(m_bluetoothName);
    const bool inRange = management()->isInRange(m_bluetoothName);
    m_buttonChange->setEnabled(inRange && !current);
    m_buttonChange->setToolTip(current   ? tr("This desk is already connected")
                               : inRange ? QString()
                                         : tr("This desk is not in range"));
}

void ViewDeviceDetail::actionEditName() {
    QPointer<DeviceManagement> devices(management());
    const QString bluetoothName = m_bluetoothName;
    host().push(
        new ViewNameEdit(host(), m_name->text(), [devices, bluetoothName](const QString& name) {
            if (devices)
                devices->renameDevice(bluetoothName, name);
        }));
}

void ViewDeviceDetail::actionChangeDevice() {
    management()->actionConnectWithBluetoothName(m_bluetoothName);
}

void ViewDeviceDetail::actionDeleteDevice() {
    const OMAlertContent sheet{
        tr("Prompt"), tr("Delete current desk?"), {tr("Confirm"), tr("Cancel")}, true};
    QPointer<ViewDeviceDetail> self(this);
    OMAlert::show(this, sheet, [self](int response) {
        if (!self || response != OMAlert::kFirstButton)
            return;
        // Forgetting the current desk ends the session, which replaces every page.
        if (!self->management()->deleteDevice(self->m_record))
            self->actionBack();
    });
}

} // namespace ostrel
