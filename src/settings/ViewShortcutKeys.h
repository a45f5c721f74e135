#pragma once

#include "settings/OMSettingPage.h"
#include "settings/SystemSettingRecord.h"

#include <QList>

class QLabel;

namespace ostrel {

class ShortcutCommandsView;
class ShortcutComboRowView;
class ShortcutItemRowView;
class ShortcutSwitchRowView;

// The global shortcut page: the on/off switch, the modifier combination, and the six keys with
// what each does. It also says when the desktop offers no global shortcuts or another
// application holds some of the keys, instead of leaving the user to find out; without global
// shortcuts it lists the commands to bind in the desktop's own keyboard settings instead.
class ViewShortcutKeys : public OMSettingPage {
    Q_OBJECT
public:
    static constexpr int kRowCount = 8;
    static constexpr int kRowHeights[] = {88, 128, 76};

    explicit ViewShortcutKeys(DeskControlVC* fatherVC);

    ShortcutSwitchRowView* switchRow() const { return m_switchRow; }
    ShortcutComboRowView* comboRow() const { return m_comboRow; }
    const QList<ShortcutItemRowView*>& itemRows() const { return m_itemRows; }
    ShortcutCommandsView* commandsView() const { return m_commands; }
    // Empty while the keys work as they should.
    QString notice() const;

    void initData();
    // Lets the keys go, then takes them again as the settings now say.
    void actionChangeShortcutKeys();

    // "Shift +", "Alt + Cmd +" or "Ctrl + Cmd +", localised.
    static QString prefix(const QString& combinationkey);

private:
    void reloadData();
    void refreshNotice();
    // Stores and applies `wanted`, after a confirmation when it would take Shift.
    void change(Object_SystemSetting wanted);
    void commit(const Object_SystemSetting& setting);

    Object_SystemSetting m_setting; // as last stored; shown, never saved whole
    ShortcutSwitchRowView* m_switchRow;
    ShortcutComboRowView* m_comboRow;
    QList<ShortcutItemRowView*> m_itemRows;
    ShortcutCommandsView* m_commands;
    QLabel* m_notice;
};

} // namespace ostrel
