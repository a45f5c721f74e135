#include "sim/VirtualDesk.h"

#include "core/ManualScheduler.h"
#include "protocol/BluetoothProtocol.h"
#include "protocol/BluetoothResultHandle.h"
#include "protocol/FrameSplitter.h"

#include <QSignalSpy>
#include <gtest/gtest.h>
#include <memory>

using namespace std::chrono_literals;
using namespace ostrel;

namespace {

// Keys as the host selects them for its poll answers.
constexpr int kNone = 0, kUp = 1, kDown = 2, kInfo = 4, kM1 = 11, kMemorySet = 13;

// A host that drives the desk at the byte level: the real frame splitter and classifier, whose
// poll answers go back into the desk.
class VirtualDeskTest : public ::testing::Test {
protected:
    VirtualDeskTest() : previous(Scheduler::setInstance(&scheduler)) {
        host.setWriter([this](const Bytes& bytes) {
            if (answering)
                desk->writeFromHost(bytes);
        });
    }
    ~VirtualDeskTest() override {
        desk.reset();
        Scheduler::setInstance(previous);
    }

    void start(VirtualDeskConfig config = {}) {
        desk = std::make_unique<VirtualDesk>(std::move(config));
        QObject::connect(desk.get(), &VirtualDesk::notified, [this](const Bytes& value) {
            received.push_back(value);
            splitter.append(value, [this](const Bytes& frame) { host.handleTableData(frame); });
        });
        desk->setSubscribed(true);
    }
    void hold(int key, std::chrono::milliseconds duration) {
        host.setCurrentCommandType(key);
        scheduler.advance(duration);
        host.setCurrentCommandType(kNone);
    }
    void write(const Bytes& frame) {
        desk->writeFromHost(frame);
        scheduler.runDue();
    }

    ManualScheduler scheduler;
    Scheduler* previous;
    BluetoothResultHandle host;
    FrameSplitter splitter;
    std::unique_ptr<VirtualDesk> desk;
    bool answering = true;
    std::vector<Bytes> received;
};

TEST_F(VirtualDeskTest, PollsEveryPeriodOnlyWhileSubscribedEachFollowedByADisplay) {
    start({.pollPeriod = 80ms});
    scheduler.advance(800ms);
    ASSERT_EQ(received.size(), 20u);
    EXPECT_EQ(received[1][2], 0x12);
    EXPECT_EQ(host.currentHeight(), 720);

    desk->setSubscribed(false);
    scheduler.advance(800ms);
    EXPECT_EQ(received.size(), 20u);
    EXPECT_EQ(scheduler.pendingCount(), 0u); // an idle, unwatched desk costs nothing
}

TEST_F(VirtualDeskTest, HeldKeysMoveAtTheConfiguredSpeedAndTheDisplayFollows) {
    for (auto [key, speed, expected] : {std::tuple{kUp, 3.8, 796}, std::tuple{kDown, 5.0, 620}}) {
        start({.speedCmPerSecond = speed});
        std::vector<int> reported;
        host.bluetoothResultHandle_HeightChange = [&](int h) { reported.push_back(h); };
        host.setCurrentCommandType(key);
        scheduler.advance(2050ms); // the first poll, at 50 ms, carries the key
        EXPECT_EQ(desk->heightTenths(), expected);
        EXPECT_EQ(host.currentHeight(), expected);
        EXPECT_EQ(
            std::adjacent_find(reported.begin(), reported.end(),
                               [&](int a, int b) { return (b - a) * (key == kUp ? 1 : -1) <= 0; }),
            reported.end());

        hold(kNone, 50ms);
        const int stopped = desk->heightTenths();
        scheduler.advance(1s);
        EXPECT_EQ(desk->heightTenths(), stopped);
    }
}

TEST_F(VirtualDeskTest, StopsWhenPollsGoUnansweredForTwoPeriods) {
    start();
    host.setCurrentCommandType(kUp);
    scheduler.advance(1050ms);
    answering = false; // the host froze with the key down
    scheduler.advance(50ms);
    EXPECT_TRUE(desk->isMoving());
    scheduler.advance(50ms);
    EXPECT_FALSE(desk->isMoving());
    EXPECT_EQ(desk->heightTenths(), 720 + 42); // from the first poll to two silent ones: 1.1 s
}

TEST_F(VirtualDeskTest, LimitsHoldShowWholeCentimetresFromOneMetreAndResetNeedsTheBottom) {
    start();
    hold(kMemorySet, 100ms);
    hold(kM1, 100ms);
    hold(kUp, 30s);
    EXPECT_EQ(std::pair(desk->heightTenths(), host.result()), std::pair(1200, std::string("120")));
    hold(kDown, 30s);
    EXPECT_EQ(std::pair(desk->heightTenths(), host.result()), std::pair(600, std::string("60.0")));

    // Down held at the bottom resets the desk, and the preset goes with the reset.
    desk->setResetNeeded(true);
    scheduler.advance(1s);
    EXPECT_EQ(host.result(), "RST");
    hold(kDown, 100ms);
    EXPECT_EQ(host.result(), "60.0");
    hold(kM1, 100ms);
    EXPECT_FALSE(desk->isMoving());
}

TEST_F(VirtualDeskTest, MemorySetStoresAndOneTouchRecallRunsUntilArrivalOrAnotherKey) {
    start({.startHeight = 800});
    int confirmations = 0;
    host.bluetoothResultHandle_Manage = [&](const std::string&) { ++confirmations; };
    hold(kMemorySet, 100ms);
    ASSERT_GT(confirmations, 0);
    hold(kM1, 100ms);
    EXPECT_EQ(host.result(), "80.0"); // stored: the display is back to the height

    for (bool interrupted : {false, true}) {
        hold(kDown, 2s);
        hold(kM1, 100ms); // a short tap: the desk goes on by itself
        if (interrupted) {
            hold(kUp, 500ms); // ends the move, and is held off until released
            EXPECT_FALSE(desk->isMoving());
        }
        scheduler.advance(5s);
        EXPECT_FALSE(desk->isMoving());
        EXPECT_EQ(desk->heightTenths() == 800, !interrupted);
    }
    hold(kUp, 500ms); // pressed afresh, it drives again
    EXPECT_TRUE(desk->isMoving());
}

TEST_F(VirtualDeskTest, MemorySetModeLapsesAfterFiveSeconds) {
    start();
    hold(kMemorySet, 100ms);
    scheduler.advance(4800ms);
    EXPECT_EQ(host.result(), "S-");
    scheduler.advance(200ms);
    EXPECT_EQ(host.result(), "72.0");
    hold(kM1, 100ms); // now a recall of an empty slot, not a store
    hold(kUp, 1s);
    hold(kM1, 100ms);
    EXPECT_FALSE(desk->isMoving());
}

TEST_F(VirtualDeskTest, ReportsDeviceInfoAndLightStripAsConfiguredAndAsChanged) {
    start({.minHeight = 650,
           .maxHeight = 1148,
           .inchDisplay = true,
           .sensitivity = 3,
           .tableThickness = 18,
           .supportChildLock = false});
    std::vector<DeviceModel> infos;
    std::vector<std::array<int, 5>> lights;
    host.bluetoothResultHandle_DeviceInfo = [&](const DeviceModel& m) { infos.push_back(m); };
    host.bluetoothResultHandle_LightColorInfo = [&](int s, int m, int r, int g, int b) {
        lights.push_back({s, m, r, g, b});
    };
    hold(kInfo, 50ms); // asked as a poll answer
    ASSERT_EQ(infos.size(), 1u);
    const DeviceModel& info = infos[0];
    EXPECT_EQ(std::tuple(info.mUnit, info.maxHeight, info.minHeight, info.sensitivity,
                         info.supportChildLock, info.tableThickness),
              std::tuple(1, 1148, 650, 3, false, 18));
    EXPECT_EQ(lights.size(), 1u); // a host learns of the strip with the information

    write(*BluetoothProtocol::cmdForLightStripColorWithSwitchStatus(1, 9, 0x11, 0x22, 0x33));
    write(*BluetoothProtocol::cmdForLightStripColorWithSwitchStatus(0, 4, 0, 0, 0));
    EXPECT_EQ(lights.at(1), (std::array<int, 5>{1, 9, 0x11, 0x22, 0x33}));
    EXPECT_EQ(lights.at(2), (std::array<int, 5>{0, 4, 0x11, 0x22, 0x33})); // colour kept

    write(BluetoothProtocol::cmdForResistanceGoBackWithState(0, 3));
    write(BluetoothProtocol::cmdForTableEditTabletopThickness(30));
    write(BluetoothProtocol::cmdForTableInfo());
    ASSERT_EQ(infos.size(), 2u);
    EXPECT_EQ(std::pair(infos[1].sensitivity, infos[1].tableThickness), std::pair(0, 30));
}

TEST_F(VirtualDeskTest, InjectedFaultsRaiseTheirEventsAndBlockKeysUntilCleared) {
    struct Case {
        std::function<void(VirtualDesk&, bool)> inject;
        std::string result;
    };
    const std::vector<Case> cases{
        {&VirtualDesk::setChildLock, "72.0"}, // LOC leaves the last reading standing
        {&VirtualDesk::setResetNeeded, "RST"},
        {&VirtualDesk::setSlideDown, BluetoothResultHandle::kSlideDown},
        {[](VirtualDesk& d, bool on) { d.injectError(on ? 5 : 0); }, "E05"},
    };
    for (const Case& c : cases) {
        start();
        scheduler.advance(50ms);
        c.inject(*desk, true);
        hold(kUp, 1s);
        EXPECT_EQ(host.result(), c.result);
        EXPECT_EQ(host.lock(), c.result == "72.0");
        EXPECT_EQ(desk->heightTenths(), 720) << c.result;
        c.inject(*desk, false);
        hold(kUp, 1s);
        EXPECT_GT(desk->heightTenths(), 720) << c.result;
    }
}

TEST_F(VirtualDeskTest, ObstacleStopsTheDeskAndBacksOffWhenAntiCollisionIsOn) {
    for (int sensitivity : {2, 0}) {
        start({.sensitivity = sensitivity});
        host.setCurrentCommandType(kUp);
        scheduler.advance(1050ms);
        const int hit = desk->heightTenths();
        desk->placeObstacle();
        scheduler.advance(2s); // Up still held: ignored until released
        EXPECT_EQ(desk->heightTenths(), sensitivity ? hit - 20 : hit);
    }
}

TEST_F(VirtualDeskTest, PowerCycleShowsOffThenOnAndEndsTheLink) {
    start();
    QSignalSpy dropped(desk.get(), &VirtualDesk::linkDropped);
    QSignalSpy advertising(desk.get(), &VirtualDesk::advertisingChanged);
    host.setCurrentCommandType(kUp);
    scheduler.advance(500ms);
    desk->setPowered(false);
    EXPECT_EQ(host.result(), BluetoothResultHandle::kPowerOff);
    EXPECT_FALSE(desk->isMoving());
    EXPECT_EQ(dropped.count(), 1);
    desk->setSubscribed(true); // nobody can subscribe to a dead desk
    scheduler.advance(1s);
    EXPECT_EQ(host.result(), BluetoothResultHandle::kPowerOff);

    desk->setPowered(true);
    desk->setSubscribed(true);
    scheduler.advance(50ms);
    EXPECT_EQ(host.result(), BluetoothResultHandle::kPowerOn);
    scheduler.advance(1s);
    EXPECT_NE(host.result(), BluetoothResultHandle::kPowerOn);
    EXPECT_EQ(advertising.count(), 2);
}

TEST_F(VirtualDeskTest, ReadsWritesInAnyPiecesAndDropsCorruptFrames) {
    start();
    Bytes up = BluetoothProtocol::cmdForTableResponseType(kUp);
    std::swap(up[up.size() - 3], up[up.size() - 2]);
    write(up);
    EXPECT_FALSE(desk->isMoving());

    std::swap(up[up.size() - 3], up[up.size() - 2]);
    Bytes stream{0x00, 0x9D, 0x42};
    stream.insert(stream.end(), up.begin(), up.end());
    for (std::uint8_t byte : stream)
        desk->writeFromHost({byte});
    EXPECT_TRUE(desk->isMoving());
}

} // namespace
