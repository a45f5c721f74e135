#include "app/DemoDesks.h"

#include "core/ManualScheduler.h"
#include "sim/VirtualDesk.h"
#include "transport/BluetoothTool.h"
#include "transport/RBBluetoothManager.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

using namespace std::chrono_literals;

TEST(DemoDesksTest, TheFacadeFindsTheVirtualDesks) {
    ManualScheduler scheduler;
    Scheduler* previousScheduler = Scheduler::setInstance(&scheduler);
    std::unique_ptr<BluetoothTool> previousTool;
    {
        DemoDesks demo; // installs its tool
        auto previousFacade =
            RBBluetoothManager::replaceSharedInstance(std::make_unique<RBBluetoothManager>());
        RBBluetoothManager& facade = RBBluetoothManager::sharedInstance();
        facade.blueToothIsOpen();
        scheduler.advance(1s);
        EXPECT_TRUE(facade.blueToothIsOpen());

        QStringList seen;
        facade.scanWithType(2, [&seen](const PeripheralPtr& peripheral, int, const OptionalError&) {
            if (peripheral && !seen.contains(peripheral->name()))
                seen.append(peripheral->name());
        });
        scheduler.advance(1s);
        facade.stopScanDevice();
        seen.sort();
        EXPECT_EQ(seen, (QStringList{QStringLiteral("QWJ-0001"), QStringLiteral("QWJ-0002")}));
        EXPECT_EQ(demo.desks().size(), 2);

        RBBluetoothManager::replaceSharedInstance(std::move(previousFacade));
        previousTool = BluetoothTool::replaceShareInstance(nullptr);
    }
    Scheduler::setInstance(previousScheduler);
}

} // namespace
} // namespace ostrel
