#pragma once

#include "settings/OMSettingPage.h"

#include <string>

class QPushButton;

namespace ostrel {

class SettingRowView;

// The height unit: inches or centimetres, ticked, kept only on "Confirm"; leaving any other way
// discards the choice.
class ViewUnit : public OMSettingPage {
    Q_OBJECT
public:
    static constexpr int kCentimetersTag = 1000;
    static constexpr int kInchesTag = 1001;

    explicit ViewUnit(DeskControlVC* fatherVC);

    SettingRowView* inchesRow() const { return m_inches; }
    SettingRowView* centimetersRow() const { return m_centimeters; }
    QPushButton* confirmButton() const { return m_confirm; }

    void actionSelectUnit(int tag);
    void actionConfirm();

private:
    void refreshSelection();

    std::string m_unit; // the choice shown, stored only on "Confirm"
    SettingRowView* m_inches;
    SettingRowView* m_centimeters;
    QPushButton* m_confirm;
};

} // namespace ostrel
