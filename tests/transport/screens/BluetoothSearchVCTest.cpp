#include "transport/screens/BluetoothSearchVC.h"

#include "ScreenTestSupport.h"
#include "store/CurrentDeviceStore.h"
#include "store/FileManager.h"
#include "store/OMPlistManager.h"
#include "transport/screens/BluetoothConnectTipVC.h"
#include "transport/screens/DeskSearchRowView.h"

#include <QPushButton>

namespace ostrel::test {
namespace {

class BluetoothSearchVCTest : public ScreenTest {
protected:
    // The screen starts scanning as soon as it exists, as it does inside the home window.
    BluetoothSearchVC& openScreen() {
        screen = std::make_unique<BluetoothSearchVC>();
        screen->resize(400, 500);
        return *screen;
    }

    void TearDown() override {
        screen.reset(); // while its radio still exists
        ScreenTest::TearDown();
    }

    // Sorted: desks are listed in the order the radio happens to report them.
    QStringList rowTitles() const {
        QStringList titles;
        for (const DeskSearchRowView* row : screen->rows())
            titles.append(row->title());
        titles.sort();
        return titles;
    }

    // The record that pairing `desk` at virtual time 5 s writes.
    OMBluetoothModel pairedRecord(const VirtualDesk& desk) const {
        OMBluetoothModel record;
        record.deviceName = desk.name().toStdString();
        record.bluetoothName = desk.name().toStdString();
        record.bluetoothMacAddress = central->identifierOf(&desk).toStdString();
        record.createTime = "2024-01-01 09:00:05";
        record.sitOrStand = "0";
        record.remindType = "0";
        record.remindInterval = "0";
        record.notificationsound = "0";
        record.memoryHeight = "0,0,0,0";
        record.encounterResistanceGoBack = "0";
        record.resistanceSensitivity = "1";
        record.lastConnectionTime = "2024-01-01 09:00";
        return record;
    }

    static OMBluetoothModel currentDevice() {
        const auto stored =
            FileManager::readDictionaryFileName(QString::fromLatin1(CurrentDeviceStore::kFileName));
        EXPECT_TRUE(stored);
        return fromPropertyForm<OMBluetoothModel>(stored.value_or(QVariantMap()));
    }

    // Clicks the first row at virtual time 5 s, while the scan still runs.
    void pairFirstRowAtFiveSeconds() {
        advance(5s - now());
        ASSERT_FALSE(screen->rows().isEmpty());
        click(screen->rows().first());
        EXPECT_TRUE(screen->rows().first()->isConnectShown());
        advance(200ms);
    }

    // The screen's scan, its refresh icon and the radio's scan go together.
    void expectScanning(bool on) const {
        EXPECT_EQ(screen->isScanning(), on);
        EXPECT_EQ(screen->isRefreshRotating(), on);
        EXPECT_EQ(central->isScanning(), on);
    }

    std::unique_ptr<BluetoothSearchVC> screen;
};

TEST_F(BluetoothSearchVCTest, ListsEachDeskNameOnceWhileScanningForThirtySeconds) {
    addDesk({.name = "QWJ-0001"});
    addDesk({.name = "QWJ-0001"}); // a second desk under the same name
    addDesk({.name = "QXR-0002"});
    addDesk({.name = "Speaker-7"}); // not a desk
    openScreen();
    expectScanning(true);

    advance(1s);
    EXPECT_EQ(rowTitles(), (QStringList{"QWJ-0001", "QXR-0002"}));

    advance(30s - now() - 1ms);
    EXPECT_TRUE(screen->isScanning());
    advance(1ms);
    expectScanning(false);
    EXPECT_EQ(rowTitles(), (QStringList{"QWJ-0001", "QXR-0002"})); // the list stays
}

TEST_F(BluetoothSearchVCTest, ClickWhileScanningBindsTheDeskAndOpensTheControlScreen) {
    VirtualDesk& desk = addDesk({.name = "QWJ-0001"});
    openScreen();
    pairFirstRowAtFiveSeconds();

    EXPECT_EQ(routed, QStringList{screens::kDeskControl});
    const QVariantList bound = OMPlistManager::getBindDevice();
    ASSERT_EQ(bound.size(), 1);
    EXPECT_EQ(fromPropertyForm<OMBluetoothModel>(bound.first().toMap()), pairedRecord(desk));
    EXPECT_EQ(currentDevice(), pairedRecord(desk));
    EXPECT_FALSE(screen->rows().first()->isConnectShown());
    // The control screen inherits a quiet radio and a connected desk.
    expectScanning(false);
    EXPECT_EQ(screen->blueToothManager().currentPeripheral()->name(), "QWJ-0001");
    EXPECT_TRUE(screen->blueToothManager().currentPeripheral()->isConnected());

    // Should the screen outlive the move, the desk's later link events are not a new pairing.
    desk.dropLink();
    advance(2s);
    EXPECT_EQ(routed, QStringList{screens::kDeskControl});
    EXPECT_FALSE(screen->isScanning());
    EXPECT_FALSE(BluetoothConnectTipVC::find());
}

TEST_F(BluetoothSearchVCTest, PairingABoundDeskKeepsItsRecordAndRefreshesTheConnectionTime) {
    const VirtualDesk& desk = addDesk({.name = "QWJ-0001"});
    OMBluetoothModel known = pairedRecord(desk);
    known.deviceName = "Standing desk";
    known.memoryHeight = "72,110,0,0";
    known.createTime = "2023-05-01 10:00:00";
    known.lastConnectionTime = "2023-05-01 10:00";
    OMPlistManager::saveBindDeviceWithDevice(toPropertyForm(known));

    openScreen();
    pairFirstRowAtFiveSeconds();

    OMBluetoothModel expected = known;
    expected.lastConnectionTime = "2024-01-01 09:00";
    EXPECT_EQ(OMPlistManager::getBindDevice().size(), 1);
    EXPECT_EQ(currentDevice(), expected);
}

TEST_F(BluetoothSearchVCTest, ClickAfterTheScanEndedScansAgainWithoutConnecting) {
    const VirtualDesk& desk = addDesk({.name = "QWJ-0001"});
    openScreen();
    advance(31s);
    ASSERT_FALSE(screen->isScanning());
    ASSERT_EQ(screen->rows().size(), 1);

    click(screen->rows().first());
    expectScanning(true);
    EXPECT_TRUE(screen->rows().isEmpty()); // a fresh list
    advance(1s);
    EXPECT_EQ(rowTitles(), QStringList{"QWJ-0001"});
    EXPECT_FALSE(desk.isSubscribed());
    EXPECT_FALSE(screen->blueToothManager().currentPeripheral());
    EXPECT_TRUE(routed.isEmpty());
}

TEST_F(BluetoothSearchVCTest, FailedConnectionShowsTheTipWithTheDeskNameAndPairScansAgain) {
    const VirtualDesk& desk = addDesk({.name = "QWJ-0001"});
    central->setConnectFailure(&desk, QStringLiteral("Peer refused"));
    openScreen();
    pairFirstRowAtFiveSeconds();

    BluetoothConnectTipVC* tip = BluetoothConnectTipVC::find();
    ASSERT_TRUE(tip);
    EXPECT_TRUE(tip->isVisible());
    EXPECT_EQ(tip->message(), "Cannot pair with 【QWJ-0001】");
    EXPECT_FALSE(screen->rows().first()->isConnectShown());
    EXPECT_EQ(rowTitles(), QStringList{"QWJ-0001"}); // still there to try again
    EXPECT_TRUE(routed.isEmpty());
    EXPECT_TRUE(OMPlistManager::getBindDevice().isEmpty());

    // A second failure reuses the open tip rather than stacking another.
    click(screen->rows().first());
    advance(200ms);
    EXPECT_EQ(BluetoothConnectTipVC::find(), tip);

    advance(31s);
    ASSERT_FALSE(screen->isScanning());
    tip->pairButton()->click();
    EXPECT_FALSE(tip->isVisible());
    EXPECT_TRUE(screen->isScanning());

    // Nothing stays pending: a fresh list drops a leftover link as usual (here one made
    // elsewhere once the scan has ended, whose link report starts this screen's next scan).
    advance(31s);
    ASSERT_FALSE(screen->isScanning());
    const VirtualDesk& other = addDesk({.name = "QWJ-0002"});
    const PeripheralPtr leftover =
        tool().centerManager().peripheralFor(central->identifierOf(&other));
    tool().connectDeviceWithPeripheral(leftover, [](const PeripheralPtr&, const OptionalError&) {});
    advance(1s);
    EXPECT_TRUE(screen->isScanning());
    EXPECT_FALSE(leftover->isConnected());
}

// The click comes just before the 30 s scan ends and the desk answers just after: the scan the
// link report restarts must not take the link with it.
TEST_F(BluetoothSearchVCTest, ConnectFinishingAfterTheScanEndedKeepsItsLink) {
    addDesk({.name = "QWJ-0001"});
    openScreen();
    advance(30s - VirtualCentral::kDefaultLatency / 2);
    ASSERT_TRUE(screen->isScanning());
    click(screen->rows().first());
    advance(VirtualCentral::kDefaultLatency);

    EXPECT_EQ(routed, QStringList{screens::kDeskControl});
    const PeripheralPtr paired = screen->blueToothManager().currentPeripheral();
    ASSERT_TRUE(paired);
    EXPECT_TRUE(paired->isConnected());
    EXPECT_FALSE(central->isScanning()); // the control screen inherits a quiet radio
    advance(1s);
    EXPECT_TRUE(paired->isConnected());
}

TEST_F(BluetoothSearchVCTest, FollowsTheRadio) {
    addDesk({.name = "QWJ-0001"});
    central->setPowered(false);
    openScreen();
    advance(1s);
    EXPECT_FALSE(screen->isScanning()); // no scan starts with the radio off
    EXPECT_TRUE(screen->rows().isEmpty());

    central->setPowered(true);
    advance(1s);
    EXPECT_TRUE(screen->isScanning());
    EXPECT_EQ(rowTitles(), QStringList{"QWJ-0001"});

    // Off during the scan: it stops at once and the list stays (the alert is DiscoveryTest's).
    central->setPowered(false);
    advance(1s);
    expectScanning(false);
    EXPECT_EQ(rowTitles(), QStringList{"QWJ-0001"});

    central->setPowered(true);
    advance(1s);
    EXPECT_TRUE(screen->isRefreshRotating());
}

TEST_F(BluetoothSearchVCTest, LeavingStopsItsOwnScanButNotTheNextScreens) {
    addDesk({.name = "QWJ-0001"});
    openScreen();
    advance(1s);
    screen->show();
    screen->hide();
    expectScanning(false);

    screen->actionRefresh();
    // A new search screen takes over before the old one is gone.
    auto next = std::make_unique<BluetoothSearchVC>();
    std::swap(screen, next);
    next.reset();
    expectScanning(true);
    advance(1s);
    EXPECT_EQ(rowTitles(), QStringList{"QWJ-0001"});
}

} // namespace
} // namespace ostrel::test
