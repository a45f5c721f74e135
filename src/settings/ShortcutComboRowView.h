#pragma once

#include <QList>
#include <QWidget>
#include <functional>

class QPushButton;

namespace ostrel {

// The row that picks the modifier combination: "Shift", "Alt + Cmd", "Ctrl + Cmd", one of them
// highlighted.
class ShortcutComboRowView : public QWidget {
    Q_OBJECT
public:
    static constexpr int kFirstTag = 1000;
    using SelectFn = std::function<void(const QString& combinationkey)>;

    explicit ShortcutComboRowView(QWidget* parent = nullptr);

    void setViewContentWithcombinationkey(const QString& combinationkey, SelectFn selectFn);
    // Highlights `combinationkey` without telling anyone.
    void setCombinationkey(const QString& combinationkey);
    // The button of tag 1000 + i.
    QPushButton* button(int index) const { return m_buttons.at(index); }
    QString combinationkey() const { return m_combinationkey; }

    // Choosing the combination already chosen does nothing.
    void actionMenuSelect(int tag);
    void refreshMenu();

private:
    QList<QPushButton*> m_buttons;
    QString m_combinationkey;
    SelectFn m_selectFn;
};

} // namespace ostrel
