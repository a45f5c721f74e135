#include "transport/QtPlatformCentral.h"

#include "core/ManualScheduler.h"
#include "transport/BluetoothCenterManager.h"
#include "transport/BluetoothTool.h"
#include "transport/BluetoothToolExtras.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace ostrel {
namespace {

using namespace std::chrono_literals;

// The test machines have no Bluetooth adapter (and no BlueZ): the real central must say so
// cleanly and every operation must fail softly instead of hanging or crashing.
class QtPlatformCentralTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_previous = Scheduler::setInstance(&scheduler);
        central = new QtPlatformCentral;
        if (central->state() == PlatformCentral::StatePoweredOn) {
            delete central;
            GTEST_SKIP() << "a powered Bluetooth adapter is present";
        }
        tool = std::make_unique<BluetoothTool>(central);
    }
    void TearDown() override {
        tool.reset();
        BluetoothCenterManager::setAlertHandler(nullptr);
        Scheduler::setInstance(m_previous);
    }

    ManualScheduler scheduler;
    QtPlatformCentral* central = nullptr;
    std::unique_ptr<BluetoothTool> tool;

private:
    Scheduler* m_previous = nullptr;
};

TEST_F(QtPlatformCentralTest, ReportsNoRadioAndAlertsWhenThereIsNoBle) {
    EXPECT_TRUE(central->state() == PlatformCentral::StateUnsupported ||
                central->state() == PlatformCentral::StatePoweredOff);
    QStringList alert;
    BluetoothCenterManager::setAlertHandler(
        [&](const QString& message, const QString& text, const QString& button) {
            alert = {message, text, button};
        });
    EXPECT_FALSE(tool->centerManager().blueToothIsOpen());
    scheduler.runDue();
    const QStringList expected{
        "Prompt", "This device does not support BLE4.0, please replace the device", "Confirm"};
    EXPECT_EQ(alert,
              central->state() == PlatformCentral::StateUnsupported ? expected : QStringList{});
}

TEST_F(QtPlatformCentralTest, UnknownPeripheralFailsToConnectWithoutHanging) {
    tool->centerManager();
    scheduler.runDue();
    std::vector<int> codes;
    BluetoothToolExtras(*tool).connectDeviceWithIdentifier(
        "AA:BB:CC:DD:EE:FF", [&](const PeripheralPtr& p, const OptionalError& e) {
            EXPECT_FALSE(p);
            codes.push_back(e ? e->code : -1);
        });
    // Unknown to the platform: a scan for it runs first (30 s, the time-out is unset), with the
    // radio off from the start, and ends without it.
    EXPECT_EQ(codes, std::vector<int>{0});
    scheduler.advance(29999ms);
    EXPECT_EQ(codes, std::vector<int>{0});
    scheduler.advance(1ms);
    QCoreApplication::processEvents();
    EXPECT_EQ(codes, (std::vector<int>{0, 1}));
    EXPECT_EQ(central->peripheralState("AA:BB:CC:DD:EE:FF"),
              PlatformCentral::PeripheralDisconnected);
    EXPECT_TRUE(central->services("AA:BB:CC:DD:EE:FF").isEmpty());
    EXPECT_TRUE(central->writeValueWithoutResponse({"AA:BB:CC:DD:EE:FF", "180D", "2A39"}, {0x01}));
}

} // namespace
} // namespace ostrel
