#include "store/ActivityStore.h"

#include "StoreFixture.h"
#include "store/ActivityCsv.h"
#include "store/ActivityReport.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

namespace ostrel {
namespace {

const QDate kToday(2024, 6, 10);

class ActivityStoreTest : public StoreFixture {
protected:
    static QString file() { return docFile(QLatin1String(ActivityStore::kFileName)); }

    // Closed intervals: (days before today, posture, minutes).
    static void fill(ActivityStore& store, const QList<std::tuple<int, Posture, int>>& rows) {
        qint64 open = 0;
        qint64 openMs = 0;
        for (const auto& [daysAgo, posture, minutes] : rows) {
            const QDate day = kToday.addDays(-daysAgo);
            open = store.switchInterval(open, std::exchange(openMs, qint64(minutes) * 60000),
                                        {0, day, posture, QDateTime(day, QTime(8, 0)).toUTC(), 0,
                                         QStringLiteral("D"), posture == Posture::Standing, true});
            ASSERT_NE(open, 0);
        }
        ASSERT_TRUE(store.saveDuration(open, openMs, true));
    }

    // A file holding `rows`, closed again.
    static void fillFile(const QList<std::tuple<int, Posture, int>>& rows) {
        ActivityStore store(file());
        fill(store, rows);
    }

    static qint64 standing(const ActivityStore& store, int daysAgo) {
        const QDate day = kToday.addDays(-daysAgo);
        return store.days(day, day).first().of(Posture::Standing) / 60000;
    }
};

TEST_F(ActivityStoreTest, AFreshFileKeepsIntervalsAndPreferences) {
    {
        ActivityStore store(file());
        ASSERT_TRUE(store.isWritable());
        fill(store, {{0, Posture::Sitting, 30}, {0, Posture::Standing, 45}, {1, Posture::Away, 5}});
        ASSERT_TRUE(store.setPreference(QStringLiteral("standing_goal_s"), 5400));
    }
    ActivityStore reopened(file());
    EXPECT_TRUE(reopened.movedAsideTo().isEmpty());
    const DayList days = reopened.days(kToday.addDays(-1), kToday);
    ASSERT_EQ(days.size(), 2);
    EXPECT_EQ(days[0].of(Posture::Away), 5 * 60000);
    EXPECT_EQ(days[1].of(Posture::Sitting), 30 * 60000);
    EXPECT_EQ(days[1].of(Posture::Standing), 45 * 60000);
    EXPECT_EQ(days[1].transitions, 1);
    EXPECT_EQ(reopened.preference(QStringLiteral("standing_goal_s")).toInt(), 5400);
}

TEST_F(ActivityStoreTest, AnUnusableFileIsMovedAsideWithItsCompanionsAndANewOneStarts) {
    QByteArray sqliteHeader = QByteArray("SQLite format 3") + '\0';
    const struct {
        const char* name;
        QByteArray bytes;
    } cases[] = {
        {"not a database", QByteArray("these are not the bytes of a database\n").repeated(200)},
        {"torn pages", sqliteHeader + QByteArray(8192, '\xAB')},
    };
    for (const auto& bad : cases) {
        SCOPED_TRACE(bad.name);
        SetUp();
        writeRaw(QLatin1String(ActivityStore::kFileName), bad.bytes);
        writeRaw(QStringLiteral("activity.sqlite-wal"), "wal bytes");
        ActivityStore store(file());
        const QString aside = store.movedAsideTo();
        EXPECT_TRUE(QRegularExpression(QStringLiteral("activity\\.sqlite\\.corrupt-\\d{8}-\\d{6}$"))
                        .match(aside)
                        .hasMatch())
            << aside.toStdString();
        QFile kept(aside);
        ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
        EXPECT_EQ(kept.readAll(), bad.bytes); // nothing of the old file is lost
        EXPECT_TRUE(QFile::exists(aside + QStringLiteral("-wal")));
        ASSERT_TRUE(store.isWritable());
        fill(store, {{0, Posture::Standing, 10}});
        EXPECT_EQ(standing(store, 0), 10);
    }
}

TEST_F(ActivityStoreTest, AReadOnlyFileIsReadButNeverWritten) {
    fillFile({{0, Posture::Standing, 20}});
    QFile::setPermissions(file(), QFileDevice::ReadOwner | QFileDevice::ReadGroup);
    const QByteArray before = readRaw(QLatin1String(ActivityStore::kFileName));
    {
        ActivityStore store(file());
        EXPECT_TRUE(store.isOpen());
        EXPECT_FALSE(store.isWritable());
        EXPECT_TRUE(store.movedAsideTo().isEmpty());
        EXPECT_EQ(standing(store, 0), 20);
        EXPECT_EQ(store.switchInterval(0, 0, {0, kToday, Posture::Sitting, {}, 0, {}, false, true}),
                  0);
        EXPECT_FALSE(store.setPreference(QStringLiteral("k"), 1));
    }
    EXPECT_EQ(readRaw(QLatin1String(ActivityStore::kFileName)), before);
    QFile::setPermissions(file(), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

TEST_F(ActivityStoreTest, DaysBeyondAYearBecomeDailyTotalsWithTheSameFigures) {
    ActivityStore store(file());
    fill(store, {{400, Posture::Standing, 50},
                 {400, Posture::Sitting, 30},
                 {400, Posture::Standing, 25},
                 {365, Posture::Standing, 15},
                 {0, Posture::Standing, 5}});
    const DayList before = store.days(kToday.addDays(-400), kToday);
    ASSERT_TRUE(store.compact(kToday));
    ASSERT_TRUE(store.compact(kToday)); // again: nothing is counted twice
    const DayList after = store.days(kToday.addDays(-400), kToday);
    for (qsizetype i = 0; i < before.size(); ++i) {
        EXPECT_EQ(after[i].ms, before[i].ms) << i;
        EXPECT_EQ(after[i].transitions, before[i].transitions) << i;
    }
    EXPECT_EQ(store.intervals(kToday.addDays(-400), kToday.addDays(-400)).size(), 0);
    EXPECT_EQ(store.intervals(kToday.addDays(-365), kToday).size(), 2);
    EXPECT_EQ(standing(store, 400), 75);
}

TEST_F(ActivityStoreTest, StreakCountsGoalDaysAndSkipsDaysWithoutADesk) {
    const qint64 goal = 60;
    // Standing minutes per day, oldest first, today last; -1: no desk that day.
    const struct {
        QList<int> minutes;
        int streak;
    } cases[] = {
        {{60, 60, 60}, 3},    {{60, 60, 10}, 2}, {{60, 10, 60}, 1}, {{60, -1, -1, 60}, 2},
        {{10, -1, 60, 0}, 1}, {{-1, -1, -1}, 0}, {{60, 59, 61}, 1},
    };
    for (const auto& c : cases) {
        DayList days;
        for (int minutes : c.minutes) {
            DayTotals day;
            day.add(minutes < 0 ? Posture::Unknown : Posture::Standing,
                    std::max(minutes, 1) * 60000LL);
            day.add(Posture::Sitting, minutes < 0 ? 0 : 1);
            days.append(day);
        }
        EXPECT_EQ(ActivityReport::streak(days, goal * 60000), c.streak)
            << testing::PrintToString(std::vector<int>(c.minutes.begin(), c.minutes.end()));
    }
}

TEST_F(ActivityStoreTest, TheCommandLineReportAndTheExportsNameEveryDayAndInterval) {
    fillFile({{1, Posture::Standing, 125}, {0, Posture::Sitting, 61}});
    const ActivityStore store(file(), ActivityStore::Mode::ReadOnly);
    // The report's figures reach the command line's JSON in DeskCommandLineTest.
    const QJsonObject json = ActivityReport::fromStore(store, kToday, 2).toJson();
    EXPECT_EQ(json.value("streak_days").toInt(), 1);
    EXPECT_EQ(json.value("days").toArray().at(0).toObject().value("date").toString(),
              QStringLiteral("2024-06-09"));
    EXPECT_EQ(ActivityCsv::days(store.days(kToday.addDays(-1), kToday)),
              "date,sitting_min,standing_min,away_min,transitions\n"
              "2024-06-09,0,125,0,1\n2024-06-10,61,0,0,0\n");
    const QList<QByteArray> rows =
        ActivityCsv::intervals(store.intervals(kToday.addDays(-1), kToday)).split('\n');
    ASSERT_EQ(rows.size(), 4);
    EXPECT_TRUE(rows[1].startsWith("2024-06-09,2024-06-09T08:00:00,2024-06-09T10:05:00,standing,"
                                   "125,D"))
        << rows[1].toStdString();
}

} // namespace
} // namespace ostrel
