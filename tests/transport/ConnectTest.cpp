#include "TransportTestSupport.h"
#include "core/NotificationNames.h"
#include "transport/DisplayRepeats.h"

namespace ostrel::test {
namespace {

class ConnectTest : public TransportTest {
protected:
    struct Report {
        std::chrono::milliseconds at;
        std::optional<BluetoothError> error;
    };
    // Connects through the facade and records every report of the connect callback.
    void connectRecording(const PeripheralPtr& peripheral,
                          RBBluetoothManager::FrameCallback frames = {}) {
        facade().connectDeviceWithPeripheral(
            peripheral,
            [this](const PeripheralPtr&, const OptionalError& error) {
                reports.push_back({now(), error});
            },
            std::move(frames));
    }
    // The error code of each report, 0 for none.
    std::vector<int> codes() const {
        std::vector<int> codes;
        for (const Report& report : reports)
            codes.push_back(report.error ? report.error->code : 0);
        return codes;
    }
    PeripheralPtr discovered() {
        desk = &addDesk();
        return discover(*desk);
    }
    std::vector<Report> reports;
    VirtualDesk* desk = nullptr;
};

// Asked again, the facade answers at once without a new platform connect, reports state 3
// again and, given a frame callback, subscribes it.
TEST_F(ConnectTest, ConnectsAndAnswersAgainAtOnceForAConnectedDesk) {
    const PeripheralPtr peripheral = discovered();
    ASSERT_TRUE(peripheral);
    const int& connectedPosts = countPosts(notifications::kBluetoothConnected);
    std::vector<int> states;
    facade().bluetoothStateChanged(
        [&](const PeripheralPtr& p, int state) { states.push_back(p == peripheral ? state : -1); });

    connectRecording(peripheral);
    advance(VirtualCentral::kDefaultLatency);
    EXPECT_EQ(codes(), std::vector<int>{0});
    EXPECT_TRUE(facade().isConnect());
    EXPECT_EQ(facade().currentPeripheral(), peripheral);
    EXPECT_EQ(connectedPosts, 1);
    EXPECT_EQ(states, std::vector<int>{3});
    EXPECT_FALSE(desk->isSubscribed());

    int frames = 0;
    const auto asked = now();
    connectRecording(peripheral, [&](const std::optional<Bytes>& frame, const OptionalError&) {
        frames += frame ? 1 : 0;
    });
    ASSERT_EQ(codes(), (std::vector<int>{0, 0}));
    EXPECT_EQ(reports[1].at, asked);
    EXPECT_EQ(states, (std::vector<int>{3, 3}));
    advance(1s);
    EXPECT_EQ(connectedPosts, 1);
    EXPECT_EQ(reports.size(), 2u);
    EXPECT_TRUE(desk->isSubscribed());
    EXPECT_GT(frames, 0);
}

// A time-out set during an attempt applies from the next one on.
TEST_F(ConnectTest, UnansweredConnectTimesOutAndLeavesTheDeskDisconnected) {
    const PeripheralPtr peripheral = discovered();
    desk->setInRange(false);
    connectRecording(peripheral); // with the default 30 s
    facade().setConnectTimeOut(10);
    advance(29999ms);
    EXPECT_TRUE(reports.empty());
    advance(1ms);
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports[0].error, (BluetoothError{3, "connect device timeout ~~"}));
    EXPECT_EQ(peripheral->state(), PlatformCentral::PeripheralDisconnected);

    connectRecording(peripheral);
    advance(9999ms);
    EXPECT_EQ(reports.size(), 1u);
    advance(1ms);
    EXPECT_EQ(reports.size(), 2u);
    // The abandoned attempt stays abandoned when the desk returns.
    desk->setInRange(true);
    advance(1s);
    EXPECT_FALSE(peripheral->isConnected());
    EXPECT_EQ(reports.size(), 2u);
    EXPECT_EQ(facade().currentPeripheral(), peripheral); // named even after a failure
}

TEST_F(ConnectTest, PlatformFailureIsCodeThreeWithThePlatformText) {
    const PeripheralPtr peripheral = discovered();
    central->setConnectFailure(desk, "Peer removed pairing information");
    connectRecording(peripheral);
    advance(1s);
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports[0].error, (BluetoothError{3, "Peer removed pairing information"}));
    EXPECT_FALSE(facade().isConnect());
}

TEST_F(ConnectTest, LostLinkWithAutoReconnectComesBackToTheSameCallbacks) {
    const PeripheralPtr peripheral = discovered();
    std::vector<int> frameTypes;
    connectRecording(peripheral, [&](const std::optional<Bytes>& frame, const OptionalError&) {
        if (frame)
            frameTypes.push_back((*frame)[2]);
    });
    advance(500ms);
    ASSERT_EQ(reports.size(), 1u);
    ASSERT_FALSE(frameTypes.empty());
    desk->setInRange(false);
    ASSERT_EQ(codes(), (std::vector<int>{0, 6}));
    EXPECT_FALSE(facade().isConnect());
    advance(2s);
    frameTypes.clear();

    int answers = 0;
    central->setWriteObserver([&](const GattPath&, const Bytes&) { ++answers; });
    desk->setInRange(true);
    advance(500ms);
    EXPECT_EQ(codes(), (std::vector<int>{0, 6, 0}));
    EXPECT_TRUE(facade().isConnect());
    EXPECT_TRUE(desk->isSubscribed());
    // The new link's channel answers the polls itself; of the displays that follow them, an idle
    // desk's repeats arrive once each, one in DisplayRepeats::kPassEvery.
    EXPECT_EQ(std::count(frameTypes.begin(), frameTypes.end(), 0x11), 0);
    EXPECT_GT(answers, DisplayRepeats::kPassEvery);
    EXPECT_EQ(1 + (answers - 1) / DisplayRepeats::kPassEvery,
              std::count(frameTypes.begin(), frameTypes.end(), 0x12));
}

// Radio off drops the link; the pending reconnection completes when the radio is back, and the
// power change itself is reported once each way.
TEST_F(ConnectTest, RadioPowerCycleReconnects) {
    const PeripheralPtr peripheral = discovered();
    std::vector<int> states;
    facade().bluetoothStateChanged(
        [&](const PeripheralPtr&, int state) { states.push_back(state); });
    connectRecording(peripheral);
    advance(100ms);
    central->setPowered(false);
    EXPECT_EQ(codes(), (std::vector<int>{0, 6}));
    EXPECT_FALSE(facade().blueToothIsOpen());
    advance(5s);
    central->setPowered(true);
    advance(100ms);
    EXPECT_EQ(codes(), (std::vector<int>{0, 6, 0}));
    // Connected, radio off, radio on, connected again.
    EXPECT_EQ(states, (std::vector<int>{3, 0, 1, 3}));
}

// resetScanManager forgets the found desks and stops scanning but keeps links; resetManager
// also ends them, and a link ended on purpose is not re-established.
TEST_F(ConnectTest, TeardownIsNotTreatedAsALoss) {
    const PeripheralPtr peripheral = discovered();
    connectRecording(peripheral);
    advance(100ms);
    facade().scanWithType(2, [](const PeripheralPtr&, int, const OptionalError&) {});
    facade().resetScanManager();
    EXPECT_FALSE(central->isScanning());
    EXPECT_TRUE(tool().centerManager().foundDeviceDict().isEmpty());
    EXPECT_TRUE(peripheral->isConnected());
    EXPECT_EQ(reports.size(), 1u);

    facade().resetManager();
    advance(100ms);
    EXPECT_EQ(codes(), (std::vector<int>{0, 5}));
    advance(40s);
    EXPECT_FALSE(peripheral->isConnected());
    EXPECT_TRUE(tool().centerManager().connectedDeviceDict().isEmpty());
    EXPECT_TRUE(tool().centerManager().foundDeviceDict().isEmpty());
}

TEST_F(ConnectTest, ConnectByIdentifierChecksItFirst) {
    const VirtualDesk& known = addDesk();
    std::vector<std::optional<BluetoothError>> errors;
    auto record = [&](const PeripheralPtr&, const OptionalError& e) { errors.push_back(e); };
    extras().connectDeviceWithIdentifier("", record);
    extras().connectDeviceWithIdentifier("desk-1", record);
    ASSERT_EQ(errors.size(), 2u); // at once
    extras().connectDeviceWithIdentifier(central->identifierOf(&known), record);
    advance(500ms);
    EXPECT_EQ(errors, (std::vector<std::optional<BluetoothError>>{
                          BluetoothError{13, "the identifier is empty !"},
                          BluetoothError{13, "the identifier is not effect !"}, std::nullopt}));
}

TEST_F(ConnectTest, BatchConnectStaggersAndReportsOnceAllAnswered) {
    addDesk();
    addDesk({.name = "QWJ-0002"});
    central->setLatency(1ms);
    QList<PeripheralPtr> connected;
    std::optional<std::chrono::milliseconds> doneAt;
    tool().setManagerOptions(facade().toolOptions());
    extras().scanAndConnectAllDeviceWithRule(
        [](const PeripheralPtr& p) { return p->name().startsWith("QWJ"); },
        [&](const QList<PeripheralPtr>& list, const OptionalError& error) {
            EXPECT_FALSE(error);
            connected = list;
            doneAt = now();
        });
    advance(31s);
    ASSERT_EQ(connected.size(), 2);
    EXPECT_EQ(doneAt, 30s + 300ms + 1ms); // the second connect starts 0.3 s after the first
    for (const PeripheralPtr& p : connected) {
        EXPECT_TRUE(p->isConnected());
        EXPECT_TRUE(p->connectErrorDescription().isEmpty());
    }
}

} // namespace
} // namespace ostrel::test
