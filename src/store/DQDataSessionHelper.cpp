#include "DQDataSessionHelper.h"

#include "CachedSettingsFile.h"
#include "DQDataCatchHelper.h"

namespace ostrel {

namespace {

const QString kUserFile = QStringLiteral("User.plist");
const QString kSystemSettingFile = QStringLiteral("SystemSetting.plist");
const QString kLightColorFile = QStringLiteral("LightColor.plist");

void save(const QString& fileName, const QVariantMap& dictionary) {
    DQDataCatchHelper::saveFileWithFileName(fileName, QVariantList{dictionary});
}

QVariantMap firstDictionary(const QString& fileName) {
    const QVariantList list = DQDataCatchHelper::getFileWithFileName(fileName);
    return list.isEmpty() ? QVariantMap() : list.first().toMap();
}

// Read on every height report for the unit, so it is kept in memory.
CachedSettingsFile& systemSettingFile() {
    static CachedSettingsFile file(kSystemSettingFile);
    return file;
}

void clear(const QString& fileName) {
    DQDataCatchHelper::deleteFileWithPath(DQDataCatchHelper::getDocPath() + QLatin1Char('/') +
                                          fileName);
}

} // namespace

void DQDataSessionHelper::userSaveObjectUser(const QVariantMap& user) {
    save(kUserFile, user);
}
QVariantMap DQDataSessionHelper::userGetinfo() {
    return firstDictionary(kUserFile);
}
void DQDataSessionHelper::userClearData() {
    clear(kUserFile);
}
bool DQDataSessionHelper::userIsLoginSelf() {
    return !userGetinfo().isEmpty();
}

void DQDataSessionHelper::userSaveSystemSetting(const QVariantMap& setting) {
    systemSettingFile().write(setting);
}
QVariantMap DQDataSessionHelper::userGetSystemSettinginfo() {
    return systemSettingFile().read();
}
void DQDataSessionHelper::userClearSystemSettingData() {
    systemSettingFile().clear();
}

void DQDataSessionHelper::userSaveLightColor(const QVariantMap& lightColor) {
    save(kLightColorFile, lightColor);
}
QVariantMap DQDataSessionHelper::userGetLightColorInfo() {
    return firstDictionary(kLightColorFile);
}
void DQDataSessionHelper::userClearLightColorData() {
    clear(kLightColorFile);
}

} // namespace ostrel
