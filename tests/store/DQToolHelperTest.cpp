#include "store/DQToolHelper.h"

#include "core/ManualScheduler.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

TEST(DQToolHelperTest, MessageAgeAgainstTheWallClock) {
    ManualScheduler clock(QDateTime(QDate(2024, 3, 10), QTime(9, 0)));
    Scheduler* previous = Scheduler::setInstance(&clock);
    const std::vector<std::pair<const char*, QString>> cases = {
        {"2024/03/10 08:30:15", "08:30"}, {"2024/03/10 8:30", "8:30"},           {"2024/03/10", ""},
        {"2024/03/09 23:59:59", "昨天"},  {"2024/03/08 10:00:00", "2024/03/08"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(DQToolHelper::getDateWithEndDate(text), expected) << text;
    clock.advance(std::chrono::hours(24));
    EXPECT_EQ(DQToolHelper::getDateWithEndDate("2024/03/10 08:30:15"), "昨天");
    Scheduler::setInstance(previous);
}

TEST(DQToolHelperTest, SecondsRoundTripAndWeekdaysStartOnSunday) {
    const QDateTime date(QDate(2024, 1, 7), QTime(13, 5, 9)); // a Sunday
    const QString seconds = DQToolHelper::getTimeWithDate(date);
    EXPECT_EQ(DQToolHelper::getDateWithTime(seconds, "yyyy-MM-dd HH:mm:ss"), "2024-01-07 13:05:09");
    EXPECT_EQ(DQToolHelper::getWeekdayWithDate(date), "星期日");
    EXPECT_EQ(DQToolHelper::getWeekdayWithDate(date.addDays(6)), "星期六");
}

} // namespace
} // namespace ostrel
