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
    VirtualDeskTest() {
        previous = Scheduler::setInstance(&scheduler);
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
    int framesOfType(std::uint8_t type) const {
        return static_cast<int>(std::count_if(received.begin(), received.end(),
                                              [&](const Bytes& f) { return f[2] == type; }));
    }

    ManualScheduler scheduler;
    Scheduler* previous = nullptr;
    BluetoothResultHandle host;
    FrameSplitter splitter;
    std::unique_ptr<VirtualDesk> desk;
    bool answering = true;
    std::vector<Bytes> received;
};

TEST_F(VirtualDeskTest, PollsEveryPeriodOnlyWhileSubscribedEachFollowedByADisplay) {
    start({.pollPeriod = 80ms});
    scheduler.advance(800ms);
    EXPECT_EQ(framesOfType(0x11), 10);
    EXPECT_EQ(framesOfType(0x12), 10);
    for (std::size_t i = 0; i < received.size(); ++i) {
        EXPECT_TRUE(BluetoothResultHandle::crcCheck(received[i]));
        EXPECT_EQ(received[i][2], i % 2 == 0 ? 0x11 : 0x12);
    }
    EXPECT_EQ(host.currentHeight(), 720);

    desk->setSubscribed(false);
    scheduler.advance(800ms);
    EXPECT_EQ(received.size(), 20u);
    EXPECT_EQ(scheduler.pendingCount(), 0u); // an idle, unwatched desk costs nothing
}

TEST_F(VirtualDeskTest, HeldKeysMoveAtTheConfiguredSpeedAndTheDisplayFollows) {
    struct Case {
        int key;
        double speed;
        int expected; // after 2 s held
    };
    for (const Case& c : {Case{kUp, 3.8, 796}, Case{kDown, 3.8, 644}, Case{kUp, 5.0, 820}}) {
        received.clear();
        start({.speedCmPerSecond = c.speed});
        std::vector<int> reported;
        host.bluetoothResultHandle_HeightChange = [&](int h) { reported.push_back(h); };
        host.setCurrentCommandType(c.key);
        scheduler.advance(50ms); // the first poll carries the key
        scheduler.advance(2s);
        EXPECT_EQ(desk->heightTenths(), c.expected);
        EXPECT_EQ(host.currentHeight(), c.expected);
        EXPECT_TRUE(std::is_sorted(reported.begin(), reported.end(),
                                   [&](int a, int b) { return c.key == kUp ? a < b : a > b; }));

        host.setCurrentCommandType(kNone);
        scheduler.advance(50ms);
        const int stopped = desk->heightTenths();
        scheduler.advance(1s);
        EXPECT_FALSE(desk->isMoving());
        EXPECT_EQ(desk->heightTenths(), stopped);
    }
}

TEST_F(VirtualDeskTest, StopsWhenPollsGoUnansweredForTwoPeriods) {
    start();
    hold(kUp, 1s);
    host.setCurrentCommandType(kUp);
    answering = false; // the host froze with the key down
    scheduler.advance(50ms);
    EXPECT_TRUE(desk->isMoving());
    scheduler.advance(50ms);
    EXPECT_FALSE(desk->isMoving());
    EXPECT_EQ(desk->heightTenths(), 720 + 40); // 1.05 s of travel
}

TEST_F(VirtualDeskTest, LimitsHoldAndShowWholeCentimetresFromOneMetre) {
    start();
    hold(kUp, 30s);
    EXPECT_EQ(desk->heightTenths(), 1200);
    EXPECT_EQ(host.result(), "120");
    hold(kDown, 30s);
    EXPECT_EQ(desk->heightTenths(), 600);
    EXPECT_EQ(host.result(), "60.0");
}

TEST_F(VirtualDeskTest, InchDisplayShowsTenthsOfAnInchAndTargetsUseThem) {
    start({.inchDisplay = true});
    scheduler.advance(50ms);
    EXPECT_EQ(host.currentHeight(), 283);                   // 72.0 cm
    write(BluetoothProtocol::cmdForTableTargetHeight(394)); // 39.4 in
    scheduler.advance(20s);
    EXPECT_EQ(desk->heightTenths(), 1001);
    EXPECT_EQ(host.currentHeight(), 394);
}

TEST_F(VirtualDeskTest, MemorySetStoresAndOneTouchRecallArrivesAndStops) {
    start({.startHeight = 800});
    std::vector<std::string> manage;
    host.bluetoothResultHandle_Manage = [&](const std::string& r) { manage.push_back(r); };
    hold(kMemorySet, 100ms);
    ASSERT_FALSE(manage.empty());
    hold(kM1, 100ms);
    scheduler.advance(100ms);
    EXPECT_EQ(host.result(), "80.0"); // stored: the display is back to the height

    hold(kDown, 2s);
    ASSERT_LT(desk->heightTenths(), 730);
    hold(kM1, 100ms); // a short tap: the desk goes on by itself
    scheduler.advance(5s);
    EXPECT_FALSE(desk->isMoving());
    EXPECT_EQ(desk->heightTenths(), 800);
    EXPECT_EQ(host.currentHeight(), 800);
}

TEST_F(VirtualDeskTest, MemorySetModeLapsesAfterFiveSeconds) {
    start();
    hold(kMemorySet, 100ms);
    EXPECT_EQ(host.result(), "S-");
    scheduler.advance(4800ms);
    EXPECT_EQ(host.result(), "S-");
    scheduler.advance(200ms);
    EXPECT_EQ(host.result(), "72.0");
    hold(kM1, 100ms); // now a recall of an empty slot: nothing happens
    scheduler.advance(1s);
    EXPECT_FALSE(desk->isMoving());
    EXPECT_EQ(host.result(), "72.0");
}

TEST_F(VirtualDeskTest, AnotherKeyEndsAOneTouchMoveAndIsHeldOffUntilReleased) {
    start();
    hold(kMemorySet, 100ms);
    hold(kM1, 100ms);
    hold(kUp, 3s);
    hold(kM1, 100ms);
    ASSERT_TRUE(desk->isMoving());
    host.setCurrentCommandType(kDown);
    scheduler.advance(500ms);
    EXPECT_FALSE(desk->isMoving());
    host.setCurrentCommandType(kNone);
    scheduler.advance(50ms);
    hold(kDown, 500ms); // pressed afresh, it drives again
    EXPECT_TRUE(desk->isMoving());
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
    EXPECT_EQ(host.currentCommandType(), kNone);
    EXPECT_EQ(infos[0].mUnit, 1);
    EXPECT_EQ(infos[0].maxHeight, 1148);
    EXPECT_EQ(infos[0].minHeight, 650);
    EXPECT_EQ(infos[0].sensitivity, 3);
    EXPECT_FALSE(infos[0].supportChildLock);
    EXPECT_EQ(infos[0].tableThickness, 18);
    ASSERT_EQ(lights.size(), 1u);

    write(*BluetoothProtocol::cmdForLightStripColorWithSwitchStatus(1, 9, 0x11, 0x22, 0x33));
    write(*BluetoothProtocol::cmdForLightStripColorWithSwitchStatus(0, 4, 0, 0, 0));
    EXPECT_EQ(lights.at(1), (std::array<int, 5>{1, 9, 0x11, 0x22, 0x33}));
    EXPECT_EQ(lights.at(2), (std::array<int, 5>{0, 4, 0x11, 0x22, 0x33})); // colour kept

    write(BluetoothProtocol::cmdForResistanceGoBackWithState(0, 3));
    write(BluetoothProtocol::cmdForTableEditTabletopThickness(30));
    write(BluetoothProtocol::cmdForTableInfo());
    ASSERT_EQ(infos.size(), 2u);
    EXPECT_EQ(infos[1].sensitivity, 0);
    EXPECT_EQ(infos[1].tableThickness, 30);
}

TEST_F(VirtualDeskTest, DeskWithoutLightStripNeverReportsOne) {
    start({.hasLightStrip = false});
    int lights = 0;
    host.bluetoothResultHandle_LightColorInfo = [&](int, int, int, int, int) { ++lights; };
    write(BluetoothProtocol::cmdForTableInfo());
    write(*BluetoothProtocol::cmdForLightStripColorWithSwitchStatus(1, 2, 0, 0, 0));
    EXPECT_EQ(lights, 0);
    EXPECT_EQ(framesOfType(0x82), 1);
}

TEST_F(VirtualDeskTest, InjectedFaultsRaiseTheirEventsAndBlockKeys) {
    struct Case {
        const char* name;
        void (VirtualDesk::*inject)(bool);
        std::string result;
    };
    const std::vector<Case> cases{
        {"child lock", &VirtualDesk::setChildLock, "72.0"},
        {"reset", &VirtualDesk::setResetNeeded, "RST"},
        {"slide down", &VirtualDesk::setSlideDown, BluetoothResultHandle::kSlideDown},
    };
    for (const Case& c : cases) {
        start();
        bool locked = false;
        host.bluetoothResultHandle_ChildLock = [&](bool lock) { locked = lock; };
        scheduler.advance(50ms); // LOC leaves the host's last reading standing
        (desk.get()->*c.inject)(true);
        hold(kUp, 1s);
        EXPECT_EQ(host.result(), c.result) << c.name;
        EXPECT_EQ(locked, c.inject == &VirtualDesk::setChildLock) << c.name;
        EXPECT_EQ(desk->heightTenths(), 720) << c.name;
        (desk.get()->*c.inject)(false);
        hold(kUp, 1s);
        EXPECT_GT(desk->heightTenths(), 720) << c.name;
    }
}

TEST_F(VirtualDeskTest, ErrorCodesShowAsTheHandsetShowsThemAndClear) {
    start();
    std::vector<std::string> errors;
    host.bluetoothResultHandle_Error = [&](const std::string& e) { errors.push_back(e); };
    desk->injectError(5);
    scheduler.advance(50ms);
    desk->injectError(37);
    desk->injectError(38); // not a code this controller has: ignored
    scheduler.advance(50ms);
    EXPECT_EQ(errors, (std::vector<std::string>{"E05", "E37"}));
    EXPECT_EQ(host.state(), 2);
    desk->injectError(0);
    scheduler.advance(50ms);
    EXPECT_EQ(host.state(), 1);
    EXPECT_EQ(host.errorCode(), "");
}

TEST_F(VirtualDeskTest, ResetCompletesByHoldingDownToTheBottomAndForgetsPresets) {
    start();
    hold(kMemorySet, 100ms);
    hold(kM1, 100ms);
    desk->setResetNeeded(true);
    hold(kDown, 5s);
    EXPECT_EQ(desk->heightTenths(), 600);
    EXPECT_EQ(host.result(), "60.0");
    hold(kUp, 1s);
    hold(kM1, 100ms); // the preset went with the reset
    EXPECT_FALSE(desk->isMoving());
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
        EXPECT_FALSE(desk->isMoving());
    }
}

TEST_F(VirtualDeskTest, PowerCycleShowsOffThenOnAndEndsTheLink) {
    start();
    QSignalSpy dropped(desk.get(), &VirtualDesk::linkDropped);
    QSignalSpy advertising(desk.get(), &VirtualDesk::advertisingChanged);
    std::vector<std::string> other;
    host.bluetoothResultHandle_Other = [&](const std::string& r) { other.push_back(r); };
    host.setCurrentCommandType(kUp);
    scheduler.advance(500ms);
    desk->setPowered(false);
    EXPECT_EQ(other, std::vector<std::string>{BluetoothResultHandle::kPowerOff});
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

TEST_F(VirtualDeskTest, GoingOutOfRangeOrDroppingTheLinkStopsPollsAndHeldMoves) {
    for (bool outOfRange : {true, false}) {
        start();
        QSignalSpy dropped(desk.get(), &VirtualDesk::linkDropped);
        host.setCurrentCommandType(kUp);
        scheduler.advance(500ms);
        outOfRange ? desk->setInRange(false) : desk->dropLink();
        const auto count = received.size();
        scheduler.advance(1s);
        EXPECT_EQ(received.size(), count);
        EXPECT_FALSE(desk->isMoving());
        EXPECT_EQ(dropped.count(), 1);
        EXPECT_EQ(desk->isAdvertising(), !outOfRange);
    }
}

TEST_F(VirtualDeskTest, ReadsWritesInAnyPiecesAndDropsCorruptFrames) {
    start();
    answering = false;
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
