#pragma once

#include <QVariantMap>

namespace ostrel {

// Settings files holding a single dictionary, stored as an array whose first element it is.
class DQDataSessionHelper {
public:
    static void userSaveObjectUser(const QVariantMap& user);
    static QVariantMap userGetinfo(); // empty when nothing is stored
    static void userClearData();
    static bool userIsLoginSelf();

    static void userSaveSystemSetting(const QVariantMap& setting);
    static QVariantMap userGetSystemSettinginfo();
    static void userClearSystemSettingData();

    static void userSaveLightColor(const QVariantMap& lightColor);
    static QVariantMap userGetLightColorInfo();
    static void userClearLightColorData();
};

} // namespace ostrel
