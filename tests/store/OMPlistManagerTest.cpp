#include "store/OMPlistManager.h"

#include "StoreFixture.h"
#include "store/OMBluetoothModel.h"

namespace ostrel {
namespace {

using OMPlistManagerTest = StoreFixture;

QVariantMap desk(const char* bluetoothName, const char* deviceName, const char* connected) {
    OMBluetoothModel model;
    model.bluetoothName = bluetoothName;
    model.deviceName = deviceName;
    model.lastConnectionTime = connected;
    model.memoryHeight = "0,0,0,0";
    return toPropertyForm(model);
}

QString userIdAt(const char* list, qsizetype index) {
    const QVariantList rows = OMPlistManager::readPlistFileDataWithFileName(list).value();
    return rows.at(index).toMap().value("user_id").toString();
}

// Operations on lists not laid down yet create nothing.
TEST_F(OMPlistManagerTest, FreshInstallationLaysDownEmptyListsOnce) {
    OMPlistManager::addData(QVariantMap{{"user_id", "1"}}, "device");
    OMPlistManager::deleteDataWithUserID("1", "device");
    OMPlistManager::setCurrentUserWithUserID("1");
    OMPlistManager::deleteBindDeviceWithBlueToothName("QWJ-1");
    OMPlistManager::saveDeviceInfoWithBlueToothName(std::nullopt, desk("QWJ-1", "A", "t"));
    EXPECT_TRUE(QDir(doc()).isEmpty());

    OMPlistManager::initDataList();
    EXPECT_EQ(OMPlistManager::readPlistDictionaryWithFileName("user_id"),
              (QVariantMap{{"auto_id", 0}}));
    for (const char* list : {"user", "control", "system_setting"})
        EXPECT_EQ(OMPlistManager::readPlistFileDataWithFileName(list), QVariantList{}) << list;
    EXPECT_FALSE(exists("device.plist"));
    EXPECT_FALSE(exists("device_setting.plist"));
    EXPECT_EQ(OMPlistManager::getUserID(), "1");

    OMPlistManager::addData(QVariantMap{{"user_id", "1"}}, "control");
    OMPlistManager::initDataList(); // a second launch keeps what is there
    EXPECT_EQ(OMPlistManager::getUserID(), "2");
    EXPECT_EQ(OMPlistManager::readPlistFileDataWithFileName("control")->size(), 1);
}

TEST_F(OMPlistManagerTest, UsersComeAndGoWithTheirEntries) {
    OMPlistManager::initDataList();
    QVariantMap first{{"name", "a"}};
    QVariantMap second{{"name", "b"}};
    OMPlistManager::createNewUser(first);
    OMPlistManager::createNewUser(second);
    EXPECT_EQ(first.value("user_id"), "1");
    EXPECT_EQ(OMPlistManager::getCurrentUserID(), "2");
    EXPECT_EQ(userIdAt("system_setting", 1), "2");
    EXPECT_EQ(OMPlistManager::readPlistFileDataWithFileName("control")->size(), 2);

    OMPlistManager::deleteUserAllDataWithUserID("2"); // the current user
    EXPECT_EQ(OMPlistManager::getCurrentUserID(), "1");
    for (const char* list : {"user", "control", "system_setting"}) {
        EXPECT_EQ(OMPlistManager::readPlistFileDataWithFileName(list)->size(), 1) << list;
        EXPECT_EQ(userIdAt(list, 0), "1") << list;
    }

    OMPlistManager::deleteData({{"user_id", 1}}, "control"); // ids compare as text
    EXPECT_EQ(OMPlistManager::readPlistFileDataWithFileName("control"), QVariantList{});
}

TEST_F(OMPlistManagerTest, SavingAKnownDeskRefreshesOnlyTimeAndCustomName) {
    QVariantMap stored = desk("QWJ-1", "Office", "2024-01-01 09:00");
    stored.insert("memoryHeight", "72,110,80,90");
    OMPlistManager::saveBindDeviceWithDevice(stored);

    OMPlistManager::saveBindDeviceWithDevice(desk("QWJ-1", "QWJ-1", "2024-01-02 10:00"));
    auto saved = fromPropertyForm<OMBluetoothModel>(OMPlistManager::getBindDevice().at(0).toMap());
    EXPECT_EQ(saved.deviceName, "Office") << "an advertised name never replaces a custom one";
    EXPECT_EQ(saved.lastConnectionTime, "2024-01-02 10:00");
    EXPECT_EQ(saved.memoryHeight, "72,110,80,90");

    OMPlistManager::saveBindDeviceWithDevice(desk("QWJ-1", "Home", "2024-01-03 11:00"));
    saved = fromPropertyForm<OMBluetoothModel>(OMPlistManager::getBindDevice().at(0).toMap());
    EXPECT_EQ(saved.deviceName, "Home");
    EXPECT_EQ(OMPlistManager::getBindDevice().size(), 1);

    QVariantMap nameless = desk("x", "Nameless", "t");
    nameless.remove("bluetoothName");
    OMPlistManager::saveBindDeviceWithDevice(nameless);
    OMPlistManager::saveBindDeviceWithDevice(nameless);
    EXPECT_EQ(OMPlistManager::getBindDevice().size(), 3) << "a desk without a name never matches";
}

TEST_F(OMPlistManagerTest, DeviceInfoIsReplacedWholeAndLooksUpByName) {
    OMPlistManager::saveBindDeviceWithDevice(desk("QWJ-1", "Office", "t1"));
    OMPlistManager::saveDeviceInfoWithBlueToothName("QWJ-1", {{"bluetoothName", "QWJ-1"}});
    OMPlistManager::saveDeviceInfoWithBlueToothName("QWJ-2", {{"bluetoothName", "QWJ-2"}});
    EXPECT_EQ(OMPlistManager::getDeviceInfoWithBlueToothName("QWJ-1"),
              (QVariantMap{{"bluetoothName", "QWJ-1"}}));
    EXPECT_EQ(OMPlistManager::getBindDevice().size(), 2);

    const auto fresh =
        fromPropertyForm<OMBluetoothModel>(OMPlistManager::getDeviceInfoWithBlueToothName("qwj-1"));
    OMBluetoothModel expected;
    expected.sitOrStand = expected.remindType = expected.remindInterval = expected.isCustom = "0";
    EXPECT_EQ(fresh, expected) << "names compare case-sensitively";

    OMPlistManager::deleteBindDeviceWithBlueToothName("QWJ-1");
    EXPECT_EQ(OMPlistManager::getBindDevice(),
              (QVariantList{QVariantMap{{"bluetoothName", "QWJ-2"}}}));
}

} // namespace
} // namespace ostrel
