#include "transport/screens/DeviceManagement.h"

#include "ScreenTestSupport.h"
#include "store/CurrentDeviceStore.h"
#include "store/FileManager.h"
#include "store/OMPlistManager.h"

#include <QFile>

namespace ostrel::test {
namespace {

const QString kBluetoothName = QStringLiteral("bluetoothName");
const QString kDeviceName = QStringLiteral("deviceName");

QVariantMap bound(const QString& name, const QString& deviceName) {
    return {{kBluetoothName, name}, {kDeviceName, deviceName}};
}

QString boundFile() {
    return OMPlistManager::localPlistFileWithFileName(QStringLiteral("D5system_binddevice"));
}

// The device list's behaviour on the virtual radio, without a session behind it: the hooks
// record what the session would have been asked.
class DeviceManagementTest : public ScreenTest {
protected:
    DeviceManagement::SessionHooks recordingHooks() {
        return {[this](const std::function<void()>& letGo) {
                    hooks.append("changeStarting");
                    letGo();
                },
                [this] { hooks.append("changeFailed"); }, [this] { hooks.append("endSession"); }};
    }

    QStringList hooks;
};

TEST_F(DeviceManagementTest, StoredEntriesItCannotReadAreSkippedAndKeptThroughARename) {
    OMPlistManager::writeData(
        QVariantList{QStringLiteral("not a record"), QVariantMap{{kDeviceName, "nameless"}},
                     bound("QWJ-0001", "Home"), bound("QWJ-0001", "Second copy")},
        QStringLiteral("D5system_binddevice"));
    CurrentDeviceStore::writeCurrent(CurrentDeviceStore::freshRecord("QWJ-0009", "id-9"));

    DeviceManagement devices(recordingHooks());
    ASSERT_EQ(devices.arrayPaired().size(), 1);
    EXPECT_EQ(devices.arrayPaired()[0].value(kDeviceName), "Home");
    EXPECT_EQ(devices.arrayPaired()[0].value("isOnLine"), "0");

    devices.renameDevice(QStringLiteral("QWJ-0001"), QStringLiteral("  Office  "));
    const QVariantList stored = OMPlistManager::getBindDevice();
    ASSERT_EQ(stored.size(), 4);
    EXPECT_EQ(stored[0], QStringLiteral("not a record"));
    EXPECT_EQ(stored[1].toMap().value(kDeviceName), "nameless");
    EXPECT_EQ(stored[2].toMap().value(kDeviceName), "Office");
    EXPECT_EQ(stored[3].toMap().value(kDeviceName), "Second copy");
    EXPECT_EQ(devices.arrayPaired()[0].value(kDeviceName), "Office");
    // Another desk is current: its file keeps its own name.
    EXPECT_EQ(CurrentDeviceStore::load().deviceName, "QWJ-0009");

    devices.renameDevice(QStringLiteral("QWJ-0001"), QStringLiteral("   "));
    devices.renameDevice(QStringLiteral("QWJ-0404"), QStringLiteral("Nobody"));
    EXPECT_EQ(OMPlistManager::getBindDevice(), stored);
}

// A bound-device file that does not parse lists nothing bound; the desks in range still show,
// two advertising one name as one.
TEST_F(DeviceManagementTest, ACorruptListAndTwinNamesStillGiveAClearList) {
    QFile file(boundFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<?xml garbage");
    file.close();
    const VirtualDeskConfig twin{.name = "QWJ-0007"};
    addDesk(twin);
    addDesk(twin);
    addDesk();

    DeviceManagement devices(recordingHooks());
    devices.blueToothStartScan();
    EXPECT_TRUE(devices.isScanning());
    advance(1000ms);
    EXPECT_TRUE(devices.arrayPaired().isEmpty());
    QStringList names;
    for (const QVariantMap& record : devices.arrayUnPaired())
        names.append(record.value(kBluetoothName).toString());
    names.sort();
    EXPECT_EQ(names, QStringList({"QWJ-0001", "QWJ-0007"}));
    advance(30s);
    EXPECT_FALSE(devices.isScanning());

    // Gone from the list's sight: nothing is tried, the session keeps its desk.
    devices.actionConnectWithBluetoothName(QStringLiteral("QWJ-0404"));
    EXPECT_FALSE(devices.isConnecting());
    EXPECT_TRUE(hooks.isEmpty());
}

} // namespace
} // namespace ostrel::test
