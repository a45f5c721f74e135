#include "settings/ViewSensitivity.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "settings/AntiCollisionSetting.h"
#include "settings/CurrentDeviceRecord.h"
#include "settings/SettingRowView.h"

#include <QVBoxLayout>

namespace ostrel {

ViewSensitivity::ViewSensitivity(DeskControlVC* fatherVC)
    : OMSettingPage(fatherVC, tr("Sensitivity")), m_objectBluetooth(CurrentDeviceRecord::load()) {
    for (int level = 1; level <= kLevelCount; ++level) {
        auto* row = new SettingRowView({}, AntiCollisionSetting::levelName(level), this);
        const int tag = kFirstTag + level - 1;
        connect(row, &QAbstractButton::clicked, this,
                [this, tag] { actionSelectSensitivity(tag); });
        m_rows[std::size_t(level - 1)] = row;
        contentLayout()->addWidget(row);
    }
    contentLayout()->addStretch();
    refreshSensitivity();
}

void ViewSensitivity::actionSelectSensitivity(int tag) {
    m_objectBluetooth = CurrentDeviceRecord::change([tag](OMBluetoothModel& record) {
        record.resistanceSensitivity = std::to_string(tag - 1000);
    });
    refreshSensitivity();
    AntiCollisionSetting::actionSetResistanceGoBack(m_objectBluetooth);
    NotificationCenter::defaultCenter().post(
        QString::fromLatin1(notifications::kSensitivityChange));
}

void ViewSensitivity::refreshSensitivity() {
    const int chosen = AntiCollisionSetting::level(m_objectBluetooth);
    for (int level = 1; level <= kLevelCount; ++level)
        levelRow(level)->setAccessoryImage(level == chosen ? QStringLiteral("setting_select")
                                                           : QString());
}

} // namespace ostrel
