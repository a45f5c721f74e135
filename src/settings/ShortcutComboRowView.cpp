#include "settings/ShortcutComboRowView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

ShortcutComboRowView::ShortcutComboRowView(QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 4, 12, 4);
    auto* title = new QLabel(tr("Shortcut Combo"), this);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    column->addWidget(title);
    auto* buttons = new QHBoxLayout;
    column->addLayout(buttons);
    const QString texts[] = {tr("Shift"), tr("Alt + Cmd"), tr("Ctrl + Cmd")};
    for (int i = 0; i < int(std::size(texts)); ++i) {
        auto* button = new QPushButton(texts[i], this);
        button->setCheckable(true);
        button->setMinimumHeight(36);
        connect(button, &QPushButton::clicked, this, [this, i] {
            actionMenuSelect(kFirstTag + i);
            refreshMenu(); // undoes the button's own flip when nothing changed
        });
        buttons->addWidget(button);
        m_buttons.append(button);
    }
}

void ShortcutComboRowView::setViewContentWithcombinationkey(const QString& combinationkey,
                                                            SelectFn selectFn) {
    m_selectFn = std::move(selectFn);
    setCombinationkey(combinationkey);
}

void ShortcutComboRowView::setCombinationkey(const QString& combinationkey) {
    m_combinationkey = combinationkey;
    refreshMenu();
}

void ShortcutComboRowView::actionMenuSelect(int tag) {
    const QString value = QString::asprintf("%d", tag - kFirstTag);
    if (value == m_combinationkey)
        return;
    m_combinationkey = value;
    if (m_selectFn)
        m_selectFn(value);
    refreshMenu();
}

// An unknown stored value highlights "Shift", the combination it stands for.
void ShortcutComboRowView::refreshMenu() {
    const int chosen = m_combinationkey == u"1" ? 1 : m_combinationkey == u"2" ? 2 : 0;
    for (int i = 0; i < m_buttons.size(); ++i)
        m_buttons[i]->setChecked(i == chosen);
}

} // namespace ostrel
