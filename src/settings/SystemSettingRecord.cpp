#include "settings/SystemSettingRecord.h"

#include "store/DQDataSessionHelper.h"
#include "store/RecordDictionary.h"

namespace ostrel {

Object_SystemSetting SystemSettingRecord::load() {
    const QVariantMap stored = DQDataSessionHelper::userGetSystemSettinginfo();
    return stored.isEmpty() ? Object_SystemSetting{}
                            : fromPropertyForm<Object_SystemSetting>(stored);
}

Object_SystemSetting SystemSettingRecord::change(Field field, std::string value) {
    Object_SystemSetting setting = load();
    setting.*field = std::move(value);
    save(setting);
    return setting;
}

void SystemSettingRecord::save(const Object_SystemSetting& setting) {
    DQDataSessionHelper::userSaveSystemSetting(toPropertyForm(setting));
}

} // namespace ostrel
