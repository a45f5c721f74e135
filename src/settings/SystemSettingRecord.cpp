#include "settings/SystemSettingRecord.h"

#include "store/DQDataSessionHelper.h"
#include "store/RecordDictionary.h"

namespace ostrel {

Object_SystemSetting SystemSettingRecord::load() {
    const QVariantMap stored = DQDataSessionHelper::userGetSystemSettinginfo();
    return stored.isEmpty() ? Object_SystemSetting{}
                            : fromPropertyForm<Object_SystemSetting>(stored);
}

void SystemSettingRecord::save(const Object_SystemSetting& setting) {
    DQDataSessionHelper::userSaveSystemSetting(toPropertyForm(setting));
}

} // namespace ostrel
