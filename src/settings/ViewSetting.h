#pragma once

#include "settings/OMSettingPage.h"

#include <array>

namespace ostrel {

class SettingRowView;

// The settings menu: a header with the desk of the chosen model and three rows, the sit-stand
// reminder, device management and the system settings. Rows are clicked, never selected. The
// presets and anti-collision page is deliberately not on it: it opens from the presets help.
class ViewSetting : public OMSettingPage {
    Q_OBJECT
public:
    static constexpr int kRowCount = 3;
    static constexpr int kRowHeight = 80;

    explicit ViewSetting(DeskControlVC* fatherVC);

    SettingRowView* row(int index) const { return m_rows[std::size_t(index)]; }
    // The desk picture's name for a desk model.
    static QString deskImageName(const QString& foldName);

    void actionPushToSitStand();
    void actionPushToDevice();
    void actionPushToSysSetting();

private:
    QWidget* buildHeader();
    void buildRows();

    std::array<SettingRowView*, kRowCount> m_rows{};
};

} // namespace ostrel
