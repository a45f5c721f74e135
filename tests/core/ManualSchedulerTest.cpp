#include "core/ManualScheduler.h"

#include <QObject>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

using namespace std::chrono_literals;
using ostrel::ManualScheduler;

TEST(ManualScheduler, RunsJobsInDueOrderWithTimeSetToEachDueTime) {
    ManualScheduler s;
    std::vector<std::pair<int, long long>> runs;
    s.after(300ms, nullptr, [&] { runs.emplace_back(3, s.now().count()); });
    s.after(100ms, nullptr, [&] { runs.emplace_back(1, s.now().count()); });
    s.after(100ms, nullptr, [&] { runs.emplace_back(2, s.now().count()); });
    s.advance(250ms);
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0], std::make_pair(1, 100LL));
    EXPECT_EQ(runs[1], std::make_pair(2, 100LL));
    EXPECT_EQ(s.now(), 250ms);
    s.advance(50ms);
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_EQ(runs[2], std::make_pair(3, 300LL));
}

TEST(ManualScheduler, CancelledAndOrphanedJobsNeverRun) {
    ManualScheduler s;
    int ran = 0;
    auto handle = s.after(10ms, nullptr, [&] { ++ran; });
    handle.cancel();
    handle.cancel(); // harmless twice
    auto context = std::make_unique<QObject>();
    s.after(10ms, context.get(), [&] { ++ran; });
    context.reset();
    s.advance(1s);
    EXPECT_EQ(ran, 0);
    EXPECT_EQ(s.pendingCount(), 0u);
}
