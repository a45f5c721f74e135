#include "settings/ShortcutSwitchRowView.h"

#include "widgets/OMSwitchButton.h"

#include <QHBoxLayout>
#include <QLabel>

namespace ostrel {

ShortcutSwitchRowView::ShortcutSwitchRowView(QWidget* parent)
    : QWidget(parent), m_title(new QLabel(this)), m_switch(new OMSwitchButton(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(12, 4, 12, 4);
    row->addWidget(m_title, 1);
    row->addWidget(m_switch);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    // The switch's own flip is undone: the row decides, from the status it holds.
    connect(m_switch, &QAbstractButton::clicked, this, [this] { actionSwitch(); });
}

void ShortcutSwitchRowView::setRowViewWithTitle(const QString& title, const QString& status,
                                                ChangeFn changeFn) {
    m_title->setText(title);
    m_changeFn = std::move(changeFn);
    setStatus(status);
}

void ShortcutSwitchRowView::setStatus(const QString& status) {
    m_status = status;
    m_switch->setChecked(m_status == u"1");
}

void ShortcutSwitchRowView::actionSwitch() {
    m_status = m_status == u"1" ? QStringLiteral("0") : QStringLiteral("1");
    m_switch->setChecked(m_status == u"1");
    if (m_changeFn)
        m_changeFn(m_status);
}

} // namespace ostrel
