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
    connect(m_field, &QLineEdit::textChanged, this, &ViewNameEdit::refreshConfirm);
    m_confirm->setDefault(true);
    refreshConfirm();

    auto* label = new QLabel(tr("Name"));
    label->setBuddy(m_field);
    contentLayout()->addWidget(label);
    contentLayout()->addWidget(m_field);
    contentLayout()->addStretch();
    contentLayout()->addWidget(m_confirm, 0, Qt::AlignHCenter);
}

// A blank name would be ignored: Confirm says so before it is pressed.
void ViewNameEdit::refreshConfirm() {
    const bool named = !m_field->text().trimmed().isEmpty();
    m_confirm->setEnabled(named);
    m_confirm->setToolTip(named ? QString() : tr("Type a name first"));
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
