#include "store/DQToolHelper.h"

#include "core/ManualScheduler.h"

#include <QFont>
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

TEST(DQToolHelperTest, DatesFormatParseAndCount) {
    const QDateTime date(QDate(2024, 1, 7), QTime(13, 5, 9));
    EXPECT_EQ(DQToolHelper::getDateStrWithDate(date, "yyyy-MM-dd HH:mm:ss"), "2024-01-07 13:05:09");
    EXPECT_EQ(DQToolHelper::getTransDateWithDate("2024-01-07 13:05", "yyyy-MM-dd HH:mm", "dd/MM"),
              "07/01");
    EXPECT_FALSE(DQToolHelper::getDateWithDateStr("not a date", "yyyy-MM-dd").isValid());
    const QString seconds = DQToolHelper::getTimeWithDate(date);
    EXPECT_EQ(DQToolHelper::getDateWithTime(seconds, "yyyy-MM-dd HH:mm:ss"), "2024-01-07 13:05:09");
    EXPECT_EQ(DQToolHelper::getWeekdayWithDate(date), "星期日");
    EXPECT_EQ(DQToolHelper::getWeekdayWithDate(date.addDays(1)), "星期一");
}

TEST(DQToolHelperTest, TextMeasuresGrowWithTheText) {
    const QFont font;
    EXPECT_EQ(DQToolHelper::getContentWidthWithFont(font, 20, ""), 0);
    EXPECT_GT(DQToolHelper::getContentWidthWithFont(font, 20, "WWWW"),
              DQToolHelper::getContentWidthWithFont(font, 20, "W"));
    EXPECT_GT(DQToolHelper::getContentHeightWithFontSize(12, 40, "many words wrap onto lines"),
              DQToolHelper::getContentHeightWithFontSize(12, 4000, "many words wrap onto lines"));
}

} // namespace
} // namespace ostrel
