#pragma once

#include "settings/OMSettingPage.h"
#include "store/OMBluetoothModel.h"

#include <array>

namespace ostrel {

class SettingRowView;

// The anti-collision sensitivity: low, middle or high, ticked. A choice is stored and sent at
// once, with anti-collision off as sensitivity 0.
class ViewSensitivity : public OMSettingPage {
    Q_OBJECT
public:
    static constexpr int kLevelCount = 3;
    static constexpr int kFirstTag = 1001;

    explicit ViewSensitivity(DeskControlVC* fatherVC);

    const OMBluetoothModel& record() const { return m_objectBluetooth; }
    // Level 1..3.
    SettingRowView* levelRow(int level) const { return m_rows[std::size_t(level - 1)]; }

    void actionSelectSensitivity(int tag);

private:
    void refreshSensitivity();

    OMBluetoothModel m_objectBluetooth;
    std::array<SettingRowView*, kLevelCount> m_rows{};
};

} // namespace ostrel
