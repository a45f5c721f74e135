#pragma once

#include "settings/OMSettingPage.h"

#include <functional>

class QCheckBox;
class QPushButton;

namespace ostrel {

class SettingRowView;

// The system settings: the height unit, the language (shown, not chosen), the shortcut keys, home
// automation, remembering the desk, the automatic cache cleaning and the reset to defaults.
// Follows unit changes made on the unit page.
class ViewSystemSetting : public OMSettingPage {
    Q_OBJECT
public:
    explicit ViewSystemSetting(DeskControlVC* fatherVC);
    ~ViewSystemSetting() override;

    // What the reset calls to take the desk's global hot keys away; the shell installs it.
    static void setHotKeyRemover(std::function<void()> remover);

    SettingRowView* unitRow() const { return m_unitRow; }
    SettingRowView* languageRow() const { return m_languageRow; }
    SettingRowView* shortcutRow() const { return m_shortcutRow; }
    SettingRowView* homeAutomationRow() const { return m_homeAutomationRow; }
    QCheckBox* rememberDeskBox() const { return m_rememberDesk; }
    QCheckBox* autoCleanBox() const { return m_autoClean; }
    QPushButton* resetButton() const { return m_reset; }

    void actionSelectUnit();
    void actionSelectShortcut();
    void actionSelectHomeAutomation();
    void actionRememberDesk(bool on);
    void actionOpenAutoClear(bool on);
    void actionReset();
    void refreshContentView();

private:
    void initView();

    SettingRowView* m_unitRow = nullptr;
    SettingRowView* m_languageRow = nullptr;
    SettingRowView* m_shortcutRow = nullptr;
    SettingRowView* m_homeAutomationRow = nullptr;
    QCheckBox* m_rememberDesk = nullptr;
    QCheckBox* m_autoClean = nullptr;
    QPushButton* m_reset = nullptr;
};

} // namespace ostrel
