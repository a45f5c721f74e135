#include "BluezTestSupport.h"
#include "transport/BluetoothCenterManager.h"

namespace ostrel::test {
namespace {

using BluezScanTest = BluezTest;

constexpr int kFirstSighting = 8;
constexpr int kRefreshed = 16;

QStringList namesSeenByRadio() {
    QStringList names;
    for (const PeripheralPtr& peripheral :
         RBBluetoothManager::sharedInstance().bluetoothTool().centerManager().foundDeviceDict())
        names.append(peripheral->name());
    return names;
}

// BlueZ reports a desk on the air again and again as property changes: they must reach the scan
// as sightings (ten make a refresh). When a desk counts as gone is DiscoveryTest's.
TEST_F(BluezScanTest, TypeTwoScanReportsMatchingDeskOnlyAndRefreshesIt) {
    addDesk(QStringLiteral("QWJ-1101"), 2);
    addDesk(QStringLiteral("Ostrel-CN-1102"), 1);
    addDesk(QStringLiteral("DESK-1103"), 2); // the type-2 layout under a name with no known head
    startScan(2);
    ASSERT_TRUE(waitFor([&] { return firstEvent(QStringLiteral("QWJ-1101"), kRefreshed); }));
    EXPECT_TRUE(namesSeenByRadio().contains(QStringLiteral("Ostrel-CN-1102")));
    EXPECT_TRUE(namesSeenByRadio().contains(QStringLiteral("DESK-1103")));
    for (const ScanEvent& event : scanEvents) {
        EXPECT_EQ(event.name, QStringLiteral("QWJ-1101")) << "flags " << event.flags;
        EXPECT_EQ(event.errorCode, std::nullopt);
    }
    EXPECT_EQ(std::count_if(scanEvents.begin(), scanEvents.end(),
                            [](const ScanEvent& e) { return e.flags == kFirstSighting; }),
              1);
}

TEST_F(BluezScanTest, RadioOffIsReportedAndEndsACollectingScanWithCodeOne) {
    addDesk(QStringLiteral("QWJ-1201"), 2);
    // Names found and the error code; shared, as a late report may outlive the test.
    using Result = std::optional<std::pair<QStringList, std::optional<int>>>;
    auto result = std::make_shared<Result>();
    const auto collect = [&result] {
        result = std::make_shared<Result>();
        facade().setScanTimeOut(2);
        facade().scanAllWithType(
            2, [result](const QList<PeripheralPtr>& found, const OptionalError& e) {
                QStringList names;
                for (const PeripheralPtr& peripheral : found)
                    names.append(peripheral->name());
                result->emplace(names, e ? std::optional<int>(e->code) : std::nullopt);
            });
        return waitFor([&result] { return result->has_value(); });
    };

    control(QStringLiteral("SetPowered"), {false});
    ASSERT_TRUE(waitFor([] { return !facade().blueToothIsOpen(); }));
    ASSERT_TRUE(collect());
    EXPECT_EQ((*result)->first, QStringList());
    EXPECT_EQ((*result)->second, 1);

    control(QStringLiteral("SetPowered"), {true});
    ASSERT_TRUE(waitFor([] { return facade().blueToothIsOpen(); }));
    ASSERT_TRUE(collect());
    EXPECT_EQ((*result)->first, QStringList{QStringLiteral("QWJ-1201")});
    EXPECT_EQ((*result)->second, std::nullopt);
}

} // namespace
} // namespace ostrel::test
