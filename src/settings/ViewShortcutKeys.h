#pragma once

#include "settings/OMSettingPage.h"
#include "settings/SystemSettingRecord.h"

#include <QList>

class QLabel;

namespace ostrel {

class ShortcutComboRowView;
class ShortcutItemRowView;
class ShortcutSwitchRowView;

// The global shortcut page: the on/off switch, the modifier combination, and the six keys with
// what each does. It also says when the desktop offers no global shortcuts or another
// application holds some of the keys, instead of leaving the user to find out.
class ViewShortcutKeys : public OMSettingPage {
    Q_OBJECT
public:
    static constexpr int kRowCount = 8;
    static constexpr int kRowHeights[] = {88, 128, 76};

    explicit ViewShortcutKeys(DeskControlVC* fatherVC);

    ShortcutSwitchRowView* switchRow() const { return m_switchRow; }
    ShortcutComboRowView* comboRow() const { return m_comboRow; }
    const QList<ShortcutItemRowView*>& itemRows() const { return m_itemRows; }
    // Empty while the keys work as they should.
    QString notice() const;

    void initData();
    // Lets the keys go, then takes them again as the settings now say.
    void actionChangeShortcutKeys();

    // "Shift +", "Alt + Cmd +" or "Ctrl + Cmd +", localised.
    static QString prefix(const QString& combinationkey);

private:
    // Stores the one field the user changed, then takes the keys as the stored settings say.
    void change(SystemSettingRecord::Field field, const QString& value);
    void reloadData();
    void refreshNotice();

    Object_SystemSetting m_setting; // as last stored; shown, never saved whole
    ShortcutSwitchRowView* m_switchRow;
    ShortcutComboRowView* m_comboRow;
    QList<ShortcutItemRowView*> m_itemRows;
    QLabel* m_notice;
};

} // namespace ostrel
