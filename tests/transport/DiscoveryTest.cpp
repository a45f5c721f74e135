#include "TransportTestSupport.h"
#include "transport/BluetoothCenterManager.h"

namespace ostrel::test {
namespace {

class DiscoveryTest : public TransportTest {
protected:
    // Continuous type-2 scan through the facade, every event recorded.
    void scan(int type = 2) {
        facade().setScanTimeOut(30);
        facade().scanWithType(
            type, [this](const PeripheralPtr& peripheral, int flags, const OptionalError& error) {
                events.push_back({now(), peripheral ? peripheral->name() : QString(), flags,
                                  error ? std::optional<int>(error->code) : std::nullopt});
            });
    }
    std::vector<int> flagsOf(const QString& name) const {
        std::vector<int> flags;
        for (const ScanEvent& event : events)
            if (event.name == name)
                flags.push_back(event.flags);
        return flags;
    }

    std::vector<ScanEvent> events;
};

TEST_F(DiscoveryTest, RepeatedSightingsAreReportedOneInTen) {
    addDesk();
    central->setAdvertisingInterval(100ms);
    scan();
    advance(100ms);
    ASSERT_EQ(flagsOf("QWJ-0001"), std::vector<int>{8});
    EXPECT_EQ(events[0].at, 100ms);

    advance(900ms); // repeats 1..9: silence
    EXPECT_EQ(flagsOf("QWJ-0001"), std::vector<int>{8});
    advance(100ms); // the 10th repeat
    EXPECT_EQ(flagsOf("QWJ-0001"), (std::vector<int>{8, 16}));
    EXPECT_EQ(events.back().at, 1100ms);
    advance(1000ms); // the 20th
    EXPECT_EQ(flagsOf("QWJ-0001"), (std::vector<int>{8, 16, 16}));
}

// Five seconds after the last sighting, also when there was only one.
TEST_F(DiscoveryTest, DeskUnseenForFiveSecondsIsDroppedAndSeenAnewLater) {
    VirtualDesk& desk = addDesk();
    scan();
    advance(150ms); // one sighting, at 100
    desk.setInRange(false);
    advance(4949ms);
    EXPECT_EQ(flagsOf("QWJ-0001"), std::vector<int>{8});
    advance(1ms);
    EXPECT_EQ(flagsOf("QWJ-0001"), (std::vector<int>{8, 32}));
    EXPECT_TRUE(tool().centerManager().foundDeviceDict().isEmpty());

    desk.setInRange(true);
    advance(350ms); // sightings at 5200, 5300, 5400
    EXPECT_EQ(flagsOf("QWJ-0001"), (std::vector<int>{8, 32, 8}));
    desk.setInRange(false);
    advance(4949ms);
    EXPECT_EQ(flagsOf("QWJ-0001"), (std::vector<int>{8, 32, 8}));
    advance(1ms); // five seconds after the last
    EXPECT_EQ(flagsOf("QWJ-0001"), (std::vector<int>{8, 32, 8, 32}));
}

// Desks keep advertising after the end: the end is reported once, bare, and nothing follows.
TEST_F(DiscoveryTest, ContinuousScanEndsAfterItsTimeOutWithOneBareEndReport) {
    addDesk({.name = "Ostrel-CN-1", .bluetoothType = 1});
    addDesk(); // type 2: not what this scan looks for
    scan(1);
    advance(29999ms);
    ASSERT_FALSE(flagsOf("Ostrel-CN-1").empty());
    EXPECT_EQ(flagsOf("Ostrel-CN-1").front(), 8);
    EXPECT_TRUE(flagsOf("QWJ-0001").empty());
    EXPECT_TRUE(flagsOf("").empty());
    advance(1ms);
    EXPECT_EQ(flagsOf(""), std::vector<int>{2});
    EXPECT_EQ(events.back(), (ScanEvent{30s, "", 2, std::nullopt}));
    EXPECT_FALSE(central->isScanning());
    const std::size_t ended = events.size();
    advance(60s);
    EXPECT_EQ(events.size(), ended);
}

TEST_F(DiscoveryTest, UnsetTimeOutScansForThirtySeconds) {
    facade().setScanTimeOut(BluetoothToolOptions::kUnsetTimeOut);
    QList<PeripheralPtr> result;
    std::optional<std::chrono::milliseconds> endedAt;
    std::optional<BluetoothError> error;
    facade().scanAllWithType(1, [&](const QList<PeripheralPtr>& list, const OptionalError& e) {
        result = list;
        error = e;
        endedAt = now();
    });
    advance(40s);
    EXPECT_EQ(endedAt, 30s);
    EXPECT_TRUE(result.isEmpty());
    EXPECT_EQ(error, (BluetoothError{2, "device not found !"}));
}

// A scan started with the radio off runs all the same and ends as a powered-off scan: the
// continuous one with flags 2 and code 1, the single-result one with code 0 at once and code 1
// at the end.
TEST_F(DiscoveryTest, RadioOffEndsScansWithPoweredOffError) {
    addDesk();
    central->setPowered(false);
    scan();
    advance(30s);
    EXPECT_EQ(events, (std::vector<ScanEvent>{{30s, "", 2, 1}}));

    std::vector<int> singleCodes;
    facade().setScanTimeOut(5);
    tool().scanDeviceWithName("QWJ-0001", [&](const PeripheralPtr& p, const OptionalError& e) {
        EXPECT_FALSE(p);
        singleCodes.push_back(e ? e->code : -1);
    });
    EXPECT_EQ(singleCodes, std::vector<int>{0}); // at once, the scan runs all the same
    EXPECT_TRUE(central->isScanning());
    advance(5s);
    EXPECT_EQ(singleCodes, (std::vector<int>{0, 1}));
    EXPECT_EQ(events.size(), 1u);
    EXPECT_FALSE(facade().blueToothIsOpen());
}

// The facade's options ask for the power alert; a central manager made without them is quiet.
TEST_F(DiscoveryTest, PowerAlertOnlyWhenTheOptionsAskForIt) {
    QStringList alerts;
    BluetoothCenterManager::setAlertHandler(
        [&](const QString&, const QString& text, const QString&) { alerts.append(text); });
    VirtualCentral otherRadio;
    const BluetoothCenterManager plain(&otherRadio);
    advance(100ms);
    otherRadio.setPowered(false);
    advance(100ms);
    EXPECT_TRUE(alerts.isEmpty());

    central->setPowered(false);
    advance(100ms);
    BluetoothCenterManager::setAlertHandler(nullptr);
    EXPECT_EQ(alerts,
              QStringList{"Bluetooth is turned off, please turn it on to connect to your desk"});
}

TEST_F(DiscoveryTest, SingleResultScanStopsAtTheNamedDeskAndFailsAtOnceWithoutACondition) {
    addDesk({.name = "QWJ-0002"});
    addDesk();
    std::optional<BluetoothError> error;
    tool().scanDeviceWithCondition(
        {}, [&](const PeripheralPtr&, const OptionalError& e) { error = e; });
    EXPECT_EQ(error, (BluetoothError{2, "the condition is nil"}));
    EXPECT_FALSE(central->isScanning());

    std::vector<int> states;
    facade().bluetoothStateChanged(
        [&](const PeripheralPtr&, int state) { states.push_back(state); });
    PeripheralPtr found;
    tool().scanDeviceWithName("QWJ-0001", [&](const PeripheralPtr& p, const OptionalError& e) {
        EXPECT_FALSE(e);
        found = p;
    });
    advance(500ms);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->name(), "QWJ-0001");
    EXPECT_EQ(states, (std::vector<int>{1, 2}));
    EXPECT_FALSE(central->isScanning());
}

// Whatever a stranger advertises, the scan goes on and reports only real matches.
TEST_F(DiscoveryTest, OddAdvertisementsAreFilteredWithoutHarm) {
    addDesk();
    scan(0);
    const QString nameKey = QString::fromLatin1(PlatformCentral::kLocalNameKey);
    central->injectSighting("AA:00:00:00:00:01", {}, -70);                          // no name
    central->injectSighting("AA:00:00:00:00:02", {{nameKey, QVariant()}}, -70);     // null
    central->injectSighting("AA:00:00:00:00:03", {{nameKey, QString("")}}, -70);    // empty
    central->injectSighting("AA:00:00:00:00:04", {{nameKey, 42}}, -70);             // not text
    central->injectSighting("AA:00:00:00:00:05", {{nameKey, QString("z5x")}}, -70); // wrong case
    advance(100ms);
    EXPECT_EQ(flagsOf("QWJ-0001"), std::vector<int>{8});
    EXPECT_EQ(events.size(), 1u);
}

} // namespace
} // namespace ostrel::test
