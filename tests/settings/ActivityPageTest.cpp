#include "settings/ActivityPage.h"

#include "SettingsTestSupport.h"
#include "session/StandingProgressView.h"
#include "settings/ActivityTimeline.h"
#include "settings/ActivityView.h"
#include "sim/ActivitySample.h"
#include "store/ActivityCsv.h"

#include <QBarCategoryAxis>
#include <QBarSet>
#include <QChart>
#include <QLabel>
#include <QSpinBox>
#include <QStackedBarSeries>

namespace ostrel::test {
namespace {

using namespace std::chrono_literals;

// The page opens from today's standing time on the control screen and shows the record of a
// month of made-up days.
class ActivityPageTest : public SettingsTest {
protected:
    ActivityView& openPage() {
        activity = std::make_unique<RecordedActivity>(); // on the virtual clock
        ActivitySample::fill(activity->store, scheduler.wallNow().addSecs(8 * 3600), 30);
        bindDesk({}, "72,110,0,0");
        openControlWithSettings();
        emit control->standingProgress()->clicked();
        auto* page = qobject_cast<ActivityPage*>(control->topView());
        EXPECT_NE(page, nullptr);
        return *page->view();
    }

    std::unique_ptr<RecordedActivity> activity;
};

TEST_F(ActivityPageTest, ShowsTodayTheStreakAndTheChosenDaysAsStackedBars) {
    ActivityView& view = openPage();
    EXPECT_TRUE(view.progressLabel()->text().startsWith(QStringLiteral("Standing today: ")));
    EXPECT_TRUE(view.streakLabel()->text().startsWith(QStringLiteral("Streak: ")));
    EXPECT_FALSE(view.timeline()->intervals().isEmpty());
    for (const int days : {30, 7}) {
        view.setChartDays(days);
        const auto series = view.chart()->series();
        ASSERT_EQ(series.size(), 1);
        const auto* bars = qobject_cast<QStackedBarSeries*>(series.first());
        ASSERT_NE(bars, nullptr);
        ASSERT_EQ(bars->count(), 3); // sitting, standing, away
        EXPECT_EQ(bars->barSets().at(1)->count(), days);
        const auto* axis =
            qobject_cast<QBarCategoryAxis*>(view.chart()->axes(Qt::Horizontal).first());
        EXPECT_EQ(axis->count(), days);
    }
}

TEST_F(ActivityPageTest, TheGoalIsKeptInQuarterHoursAndTheExportsWriteTheRecord) {
    ActivityView& view = openPage();
    view.goalBox()->setValue(90);
    EXPECT_EQ(activity->recorder.goalMs(), 90 * 60000);
    EXPECT_TRUE(view.progressLabel()->text().endsWith(QStringLiteral("of your 1:30 goal")));

    QTemporaryDir folder;
    ActivityView::setSavePathAsker([&](QWidget*, const QString& suggested) {
        return folder.filePath(QFileInfo(suggested).fileName());
    });
    view.exportDays();
    view.exportIntervals();
    ActivityView::setSavePathAsker(nullptr);
    QFile days(folder.filePath(QStringLiteral("activity-days.csv")));
    QFile intervals(folder.filePath(QStringLiteral("activity-intervals.csv")));
    ASSERT_TRUE(days.open(QIODevice::ReadOnly));
    ASSERT_TRUE(intervals.open(QIODevice::ReadOnly));
    const QList<QByteArray> dayRows = days.readAll().trimmed().split('\n');
    EXPECT_EQ(dayRows.size(), 1 + 366);
    const QDate today = activity->recorder.today();
    EXPECT_EQ(intervals.readAll(),
              ActivityCsv::intervals(activity->recorder.intervals(today.addDays(-365), today)));
}

} // namespace
} // namespace ostrel::test
