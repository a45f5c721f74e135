#pragma once

#include <QString>
#include <QVariant>
#include <functional>
#include <optional>

namespace ostrel {

// The per-user lists and the per-model bound-device list, each a property-list file in the
// documents folder named after its list. Nothing is cached: every call reads the file and every
// change rewrites it whole.
class OMPlistManager {
public:
    static QString localPlistFileWithFileName(const QString& name);
    static std::optional<QVariantList> readPlistFileDataWithFileName(const QString& name);
    static std::optional<QVariantMap> readPlistDictionaryWithFileName(const QString& name);
    // Writes an array or a dictionary; anything else (a null) writes nothing.
    static void writeData(const QVariant& data, const QString& fileName);
    // Appends to an existing list only: callers create their lists first.
    static void addData(const QVariant& data, const QString& fileName);
    static void deleteData(const QVariantMap& data, const QString& fileName);
    static void deleteDataWithUserID(const QString& userId, const QString& fileName);
    static void deleteUserAllDataWithUserID(const QString& userId);

    static void initDataList();
    static QString getUserID();
    static void setCurrentUserWithUserID(const QString& userId);
    static std::optional<QString> getCurrentUserID();
    // Fills in "user_id" and "is_current" in `user` and makes it the current user.
    static void createNewUser(QVariantMap& user);
    static void modifyUser(const QVariantMap& user, const QString& userId,
                           const std::function<void()>& modifyBlock = {});
    static void createControlListWithUserID(const QString& userId);
    static void createDeviceSettingListWithUserID(const QString& userId);
    static void createSystemSettingListWithUserID(const QString& userId);

    // The bound-device list of the current desk model, in property form.
    static QVariantList getBindDevice();
    // The bound-device list of any desk model.
    static QVariantList getBindDeviceOfModel(const QString& model);
    static void saveBindDeviceWithDevice(const QVariantMap& device);
    static void deleteBindDeviceWithBlueToothName(const QString& bluetoothName);
    static QVariantMap getDeviceInfoWithBlueToothName(const QString& bluetoothName);
    static void saveDeviceInfoWithBlueToothName(const std::optional<QString>& bluetoothName,
                                                const QVariantMap& dictDevice);
};

} // namespace ostrel
