#pragma once

#include "core/ManualScheduler.h"
#include "core/NotificationCenter.h"
#include "protocol/BluetoothResultHandle.h"
#include "sim/VirtualCentral.h"
#include "sim/VirtualDesk.h"
#include "transport/BluetoothFilter.h"
#include "transport/BluetoothTool.h"
#include "transport/BluetoothToolExtras.h"
#include "transport/RBBluetoothManager.h"

#include <deque>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace ostrel::test {

using namespace std::chrono_literals;

// One scan callback call, stamped with virtual time.
struct ScanEvent {
    std::chrono::milliseconds at;
    QString name;
    int flags;
    std::optional<int> errorCode;
    bool operator==(const ScanEvent&) const = default;
};

// A fresh process-wide transport over a virtual radio, in virtual time: the shared tool,
// facade and classifier are replaced for the test and restored afterwards.
class TransportTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_previousScheduler = Scheduler::setInstance(&scheduler);
        central = new VirtualCentral; // adopted by the tool
        m_previousTool =
            BluetoothTool::replaceShareInstance(std::make_unique<BluetoothTool>(central));
        m_previousHandle =
            BluetoothResultHandle::replaceSharedInstance(std::make_unique<BluetoothResultHandle>());
        m_previousFacade =
            RBBluetoothManager::replaceSharedInstance(std::make_unique<RBBluetoothManager>());
        facade().blueToothIsOpen(); // the radio, with the facade's options
        scheduler.runDue();         // and its first power report
    }

    void TearDown() override {
        RBBluetoothManager::replaceSharedInstance(std::move(m_previousFacade));
        BluetoothTool::replaceShareInstance(std::move(m_previousTool));
        BluetoothResultHandle::replaceSharedInstance(std::move(m_previousHandle));
        desks.clear();
        Scheduler::setInstance(m_previousScheduler);
    }

    VirtualDesk& addDesk(VirtualDeskConfig config = {}) {
        desks.push_back(std::make_unique<VirtualDesk>(std::move(config)));
        central->addDesk(desks.back().get());
        return *desks.back();
    }

    void advance(std::chrono::milliseconds by) { scheduler.advance(by); }
    std::chrono::milliseconds now() const { return scheduler.now(); }

    static RBBluetoothManager& facade() { return RBBluetoothManager::sharedInstance(); }
    static BluetoothTool& tool() { return BluetoothTool::shareInstance(); }
    static BluetoothToolExtras extras() { return BluetoothToolExtras(tool()); }
    static BluetoothResultHandle& handle() { return BluetoothResultHandle::sharedInstance(); }

    // Scans for type 2 until `desk` is sighted, then stops scanning.
    PeripheralPtr discover(const VirtualDesk& desk) {
        // The scan callback outlives this call (it hears later link events): share the result.
        auto found = std::make_shared<PeripheralPtr>();
        const QString identifier = central->identifierOf(&desk);
        facade().setScanTimeOut(30);
        facade().scanWithType(
            BluetoothFilter::getBluetoothTypeWithPeriperalName(desk.name()),
            [found, identifier](const PeripheralPtr& peripheral, int, const OptionalError&) {
                if (peripheral && peripheral->identifierString() == identifier)
                    *found = peripheral;
            });
        for (int step = 0; step < 50 && !*found; ++step)
            advance(100ms);
        facade().stopScanDevice();
        return *found;
    }

    // Discovers and connects `desk` through the facade, subscribing when `frames` is given.
    PeripheralPtr connect(const VirtualDesk& desk, RBBluetoothManager::FrameCallback frames = {}) {
        const PeripheralPtr peripheral = discover(desk);
        EXPECT_TRUE(peripheral);
        auto record = [this](const PeripheralPtr&, const OptionalError& error) {
            connectReports.push_back(error ? error->code : 0);
        };
        if (frames)
            facade().connectDeviceWithPeripheral(peripheral, record, std::move(frames));
        else
            facade().connectDeviceWithPeripheral(peripheral, record);
        advance(200ms);
        return peripheral;
    }

    // How often `name` is posted from this call on.
    const int& countPosts(const char* name) {
        int& count = m_posts.emplace_back(0);
        NotificationCenter::defaultCenter().addObserver(&m_postObserver, QString::fromLatin1(name),
                                                        [&count](const QVariant&) { ++count; });
        return count;
    }

    ManualScheduler scheduler;
    VirtualCentral* central = nullptr;
    std::vector<std::unique_ptr<VirtualDesk>> desks;
    std::vector<int> connectReports; // 0 for a report without error, else the code

private:
    Scheduler* m_previousScheduler = nullptr;
    std::unique_ptr<BluetoothTool> m_previousTool;
    std::unique_ptr<BluetoothResultHandle> m_previousHandle;
    std::unique_ptr<RBBluetoothManager> m_previousFacade;
    std::deque<int> m_posts;
    QObject m_postObserver; // goes first, and its observers with it
};

} // namespace ostrel::test
