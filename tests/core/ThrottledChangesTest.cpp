#include "core/ThrottledChanges.h"

#include "core/ManualScheduler.h"

#include <QObject>
#include <gtest/gtest.h>
#include <vector>

using namespace std::chrono_literals;
using ostrel::ManualScheduler;
using ostrel::Scheduler;
using ostrel::ThrottledChanges;

namespace {

struct Throttled : ::testing::Test {
    void SetUp() override { previous = Scheduler::setInstance(&clock); }
    void TearDown() override { Scheduler::setInstance(previous); }

    ManualScheduler clock;
    Scheduler* previous = nullptr;
    QObject context;
    std::vector<std::pair<long long, QVariantMap>> sent;
    ThrottledChanges changes{250ms, &context, [this](const QVariantMap& changed) {
                                 sent.emplace_back(clock.now().count(), changed);
                             }};
};

TEST_F(Throttled, AtOnceWhenQuietThenTheLatestAtTheIntervalsEnd) {
    changes.update({{"height", 72.0}, {"moving", false}});
    clock.advance(100ms);
    changes.update({{"height", 73.0}, {"moving", true}});
    clock.advance(50ms);
    changes.update({{"height", 74.0}, {"moving", true}});
    clock.advance(150ms);
    // Unchanged since it went out: nothing; changed and back before the interval's end: nothing.
    changes.update({{"height", 74.0}, {"moving", true}});
    clock.advance(100ms);
    changes.update({{"height", 75.0}, {"moving", true}});
    changes.update({{"height", 74.0}, {"moving", true}});
    clock.advance(1s);
    changes.update({{"height", 74.0}, {"moving", false}});

    const std::vector<std::pair<long long, QVariantMap>> expected = {
        {0, {{"height", 72.0}, {"moving", false}}},
        {250, {{"height", 74.0}, {"moving", true}}},
        {1400, {{"moving", false}}},
    };
    EXPECT_EQ(sent, expected);
}

TEST_F(Throttled, AResetAnnouncesEverythingAgainAtOnce) {
    changes.update({{"height", 72.0}});
    changes.update({{"height", 73.0}}); // waits for the interval's end, which a reset cancels
    changes.reset({{"moving", false}});
    changes.update({{"height", 73.0}, {"moving", false}});
    clock.advance(1s);
    const std::vector<std::pair<long long, QVariantMap>> expected = {
        {0, {{"height", 72.0}}},
        {0, {{"height", 73.0}}},
    };
    EXPECT_EQ(sent, expected);
}

} // namespace
