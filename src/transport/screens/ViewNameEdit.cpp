#include "transport/screens/ViewNameEdit.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

ViewNameEdit::ViewNameEdit(DevicePageHost host, const QString& deviceName, RenameCallback rename)
    : DevicePage(std::move(host), nullptr, tr("Rename")), m_rename(std::move(rename)),
      m_field(new QLineEdit), m_confirm(new QPushButton(tr("Confirm"))) {
    // A click beside the field takes the focus, which ends editing.
    setFocusPolicy(Qt::ClickFocus);
    m_field->setMaxLength(kMaxNameLength);
    m_field->setText(deviceName.left(kMaxNameLength));
    m_field->setClearButtonEnabled(true);
    connect(m_field, &QLineEdit::returnPressed, this, &ViewNameEdit::actionConfirm);
    connect(m_confirm, &QPushButton::clicked, this, &ViewNameEdit::actionConfirm);
    m_confirm->setDefault(true);

    auto* label = new QLabel(tr("Name"));
    label->setBuddy(m_field);
    contentLayout()->addWidget(label);
    contentLayout()->addWidget(m_field);
    contentLayout()->addStretch();
    contentLayout()->addWidget(m_confirm, 0, Qt::AlignHCenter);
}

void ViewNameEdit::actionConfirm() {
    m_field->clearFocus(); // ends editing first
    const QString name = m_field->text().trimmed();
    if (name.isEmpty())
        return;
    m_rename(name);
    actionBack();
}

} // namespace ostrel
