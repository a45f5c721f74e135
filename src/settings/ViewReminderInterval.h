#pragma once

#include "settings/OMSettingPage.h"

#include <array>
#include <functional>

class QLineEdit;
class QPushButton;

namespace ostrel {

class SettingRowView;

// How long the reminder waits: 45 minutes, 1 hour, 2 hours or a number of minutes typed in, and
// whether it reminds once or repeats. Kept only on "Confirm".
class ViewReminderInterval : public OMSettingPage {
    Q_OBJECT
public:
    static constexpr int kFirstTag = 1000;
    static constexpr int kCustomSelection = 3;
    static constexpr int kChoiceCount = 4;
    // (choice 0-3, minutes, repeating)
    using SelectFn = std::function<void(int selection, int minutes, bool repeat)>;

    explicit ViewReminderInterval(DeskControlVC* fatherVC);

    // `time` is the stored interval: a choice, or the minutes when `isCustom` is "1".
    void setViewWithTime(const QString& time, const QString& isCustom, const QString& isRepeat,
                         SelectFn selectFn);
    void actionSelectInterval(int tag);
    void actionSelectSingle();
    void actionSelectRepeat();
    // The minutes are not range-checked: an empty or 0 field gives a countdown that ends at once.
    void actionConfirm();

    int selection() const { return m_selection; }
    bool isRepeat() const { return m_repeat; }
    SettingRowView* choiceRow(int selection) const { return m_choices[std::size_t(selection)]; }
    SettingRowView* singleRow() const { return m_single; }
    SettingRowView* repeatRow() const { return m_repeatRow; }
    QLineEdit* minutesField() const { return m_minutes; }
    QPushButton* confirmButton() const { return m_confirm; }

private:
    QWidget* buildCustomRow();
    void refreshSelection();

    std::array<SettingRowView*, kChoiceCount> m_choices{};
    QLineEdit* m_minutes = nullptr;
    SettingRowView* m_single = nullptr;
    SettingRowView* m_repeatRow = nullptr;
    QPushButton* m_confirm = nullptr;
    int m_selection = 0;
    bool m_repeat = false;
    SelectFn m_selectFn;
};

} // namespace ostrel
