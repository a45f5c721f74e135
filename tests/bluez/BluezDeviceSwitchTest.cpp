#include "BluezTestSupport.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "store/CurrentDeviceStore.h"
#include "store/OMPlistManager.h"
#include "transport/screens/DeviceManagement.h"

#include <QDir>
#include <QStandardPaths>

namespace ostrel::test {
namespace {

const QString kFirst = QStringLiteral("QWJ-3101");
const QString kSecond = QStringLiteral("QWJ-3102");

// The device list over QtBluetooth and the stand-in: the list sees both desks, the switch moves
// the link from one to the other, and forgetting desks does what it says. What the session does
// on a switch (follow the new current desk) is done here by hand.
TEST_F(BluezTest, TheDeviceListSwitchesTheLinkBetweenTwoDesks) {
    QDir documents(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    documents.removeRecursively();
    ASSERT_TRUE(documents.mkpath(QStringLiteral(".")));
    addDesk(kFirst, 2, {{QStringLiteral("startHeight"), 800}});
    addDesk(kSecond, 2, {{QStringLiteral("startHeight"), 900}});
    facade().setAutoConnectAfterDisconnect(false); // as the session runs it
    const PeripheralPtr first = discover(kFirst);
    ASSERT_TRUE(first);
    connectDesk(first);
    ASSERT_TRUE(waitFor([&] { return frames > 0; }));
    CurrentDeviceStore::bindDevice(kFirst, first->identifierString());

    QStringList hooks;
    DeviceManagement devices({[&hooks](const std::function<void()>& letGo) {
                                  hooks.append("changeStarting");
                                  letGo();
                              },
                              [&hooks] { hooks.append("changeFailed"); },
                              [&hooks] { hooks.append("endSession"); }});
    QObject observer;
    NotificationCenter::defaultCenter().addObserver(
        &observer, QString::fromLatin1(notifications::kGlobeBlueToothIsConnect),
        [this](const QVariant&) {
            facade().setNotifyDataWithPeripheral(facade().currentPeripheral(),
                                                 [this](const std::optional<Bytes>& frame, auto) {
                                                     if (frame)
                                                         handle().handleTableData(*frame);
                                                 });
        });

    devices.blueToothStartScan();
    ASSERT_TRUE(waitFor([&] { return !devices.arrayUnPaired().isEmpty(); }));
    ASSERT_EQ(devices.arrayPaired().size(), 1);
    EXPECT_EQ(devices.arrayPaired()[0].value("isOnLine"), "1");
    EXPECT_EQ(devices.arrayUnPaired()[0].value("bluetoothName"), kSecond);

    devices.actionConnectWithBluetoothName(kSecond);
    ASSERT_TRUE(waitFor([&] { return !devices.isConnecting(); }));
    EXPECT_EQ(hooks, QStringList({"changeStarting"}));
    EXPECT_EQ(facade().currentPeripheral()->name(), kSecond);
    EXPECT_EQ(CurrentDeviceStore::load().bluetoothName, kSecond.toStdString());
    EXPECT_EQ(OMPlistManager::getBindDevice().size(), 2); // bound once connected
    ASSERT_EQ(connectReports.size(), 2u);
    EXPECT_EQ(connectReports[1], 5); // the first desk let go

    heights.clear();
    handle().setCurrentCommandType(1);
    ASSERT_TRUE(waitFor([&] { return deskHeight(kSecond) >= 920; }));
    handle().setCurrentCommandType(0);
    EXPECT_EQ(deskHeight(kFirst), 800);
    EXPECT_FALSE(heights.empty());

    devices.deleteDevice(DeviceManagement::boundRecord(kFirst));
    EXPECT_EQ(OMPlistManager::getBindDevice().size(), 1);
    EXPECT_TRUE(devices.isScanning());
    EXPECT_TRUE(devices.deleteDevice(DeviceManagement::boundRecord(kSecond)));
    EXPECT_TRUE(OMPlistManager::getBindDevice().isEmpty());
    ASSERT_TRUE(waitFor([&] { return hooks.size() == 2; }));
    EXPECT_EQ(hooks.last(), "endSession");
}

} // namespace
} // namespace ostrel::test
