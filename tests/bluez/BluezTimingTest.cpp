#include "BluezTestSupport.h"

#include <QDBusArgument>
#include <algorithm>
#include <iostream>

namespace ostrel::test {
namespace {

using BluezTimingTest = BluezTest;

qint64 percentile(std::vector<qint64> values, int percent) {
    std::sort(values.begin(), values.end());
    const auto index = (values.size() - 1) * static_cast<std::size_t>(percent) / 100;
    return values[index];
}

// Figures for the record, measured through the stand-in (advertising every 100 ms):
// scan start to the desk's first sighting, connect to the first height, and the time from
// each keypad poll leaving the desk to the host's answer arriving there.
TEST_F(BluezTimingTest, ScanConnectAndPollRoundTrip) {
    constexpr int kPollPeriodMs = 20;
    constexpr std::size_t kPolls = 200;
    const QString name = QStringLiteral("QWJ-3101");
    addDesk(name, 2, {{QStringLiteral("pollPeriod"), kPollPeriodMs}});

    const qint64 scanStart = clock.elapsed();
    const PeripheralPtr desk = discover(name);
    ASSERT_TRUE(desk);
    const qint64 foundMs = firstEvent(name, 8)->atMs - scanStart;

    const qint64 connectStart = clock.elapsed();
    connectDesk(desk);
    ASSERT_TRUE(waitFor([&] { return !heights.empty(); }));
    const qint64 firstHeightMs = clock.elapsed() - connectStart;

    std::vector<qint64> roundTrips;
    ASSERT_TRUE(waitFor([&] {
        const QDBusMessage reply = control(QStringLiteral("PollRoundTrips"), {name});
        const auto values = qdbus_cast<QList<qint64>>(reply.arguments().value(0));
        roundTrips.assign(values.begin(), values.end());
        return roundTrips.size() >= kPolls;
    }));
    const qint64 p50 = percentile(roundTrips, 50);
    const qint64 p99 = percentile(roundTrips, 99);

    std::cout << "scan start to desk found: " << foundMs << " ms\n"
              << "connect to first height: " << firstHeightMs << " ms\n"
              << "poll to answer over " << roundTrips.size() << " polls: p50 " << p50 << " us, p99 "
              << p99 << " us\n";
    RecordProperty("scan_to_found_ms", static_cast<int>(foundMs));
    RecordProperty("connect_to_first_height_ms", static_cast<int>(firstHeightMs));
    RecordProperty("poll_round_trip_p50_us", static_cast<int>(p50));
    RecordProperty("poll_round_trip_p99_us", static_cast<int>(p99));
    // A typical poll is answered well before the next one is due.
    EXPECT_LT(p50, kPollPeriodMs * 1000);
}

} // namespace
} // namespace ostrel::test
