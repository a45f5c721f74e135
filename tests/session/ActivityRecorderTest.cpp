#include "session/ActivityRecorder.h"

#include "SessionTestSupport.h"
#include "core/ManualScheduler.h"
#include "session/StandingProgressView.h"
#include "store/ActivityStore.h"

#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <functional>
#include <iostream>

namespace ostrel::test {
namespace {

using namespace std::chrono_literals;
using Ms = std::chrono::milliseconds;

// Steps of a day at the desk.
using Step = std::function<void(ManualScheduler&, ActivityRecorder&)>;
Step Wait(Ms by) {
    return [by](ManualScheduler& clock, ActivityRecorder&) { clock.advance(by); };
}
Step ShiftWall(Ms by) {
    return [by](ManualScheduler& clock, ActivityRecorder&) { clock.shiftWall(by); };
}
Step Height(double cm) {
    return [cm](ManualScheduler&, ActivityRecorder& recorder) { recorder.setHeight(cm * 10); };
}
Step Desk(const char* name) {
    return [name](ManualScheduler&, ActivityRecorder& r) { r.setDesk(QLatin1String(name)); };
}
Step Present(bool present) {
    return [present](ManualScheduler&, ActivityRecorder& r) { r.setPresent(present); };
}

// The day `offset` days after the first: whole minutes sitting, standing and away, and the
// transitions.
using Expected = std::array<int, 5>; // offset, sitting, standing, away, transitions

// Each starts at desk A, at nine unless it says otherwise.
struct Scenario {
    const char* name;
    QList<Step> steps;
    QList<Expected> days;
    QTime start{9, 0};
};

class ActivityRecorderTest : public ::testing::Test {
protected:
    static inline const QDate kFirstDay{2024, 6, 10};

    void start(QTime at) {
        scheduler = std::make_unique<ManualScheduler>(QDateTime(kFirstDay, at));
        previous = Scheduler::setInstance(scheduler.get());
        store = std::make_unique<ActivityStore>(
            folder.filePath(QStringLiteral("%1.sqlite").arg(++runs))); // a fresh file each
        recorder = std::make_unique<ActivityRecorder>(*store);
    }

    void TearDown() override {
        recorder.reset();
        store.reset();
        Scheduler::setInstance(previous);
    }

    void apply(const Step& step) { step(*scheduler, *recorder); }

    QTemporaryDir folder;
    int runs = 0;
    std::unique_ptr<ManualScheduler> scheduler;
    Scheduler* previous = nullptr;
    std::unique_ptr<ActivityStore> store;
    std::unique_ptr<ActivityRecorder> recorder;
};

TEST_F(ActivityRecorderTest, IntervalsCountFromTheCrossingOnTheSteadyClock) {
    const Scenario scenarios[] = {
        {"a crossing counts from the moment it happened",
         {Height(72), Wait(10min), Height(110), Wait(20min), Height(72), Wait(5min)},
         {{0, 15, 20, 0, 2}}},
        {"passing the threshold for less than 30 s is no interval",
         {Height(72), Wait(10min), Height(110), Wait(29s), Height(72), Wait(10min)},
         {{0, 20, 0, 0, 0}}},
        {"midnight inside an interval splits it",
         {Height(110), Wait(40min)},
         {{0, 0, 20, 0, 0}, {1, 0, 20, 0, 0}},
         QTime(23, 40)},
        {"the wall clock set back an hour doubles nothing",
         {Height(110), Wait(30min), ShiftWall(-1h), Wait(30min)},
         {{0, 0, 60, 0, 0}}},
        {"the wall clock jumping past midnight loses nothing",
         {Height(110), Wait(10min), ShiftWall(15h), Wait(10min)},
         {{0, 0, 10, 0, 0}, {1, 0, 10, 0, 0}}},
        {"the desk switched while standing",
         {Height(110), Wait(10min), Desk(""), Wait(5s), Desk("B"), Height(112), Wait(10min)},
         {{0, 0, 20, 0, 0}}},
        {"two desks on one day are the user's totals",
         {Height(70), Wait(10min), Desk(""), Wait(2min), Desk("B"), Height(115), Wait(10min)},
         {{0, 10, 10, 0, 0}}},
        {"a locked screen while standing is away",
         {Height(110), Wait(10min), Present(false), Wait(20min), Present(true), Wait(10min)},
         {{0, 0, 20, 20, 0}}},
    };
    for (const Scenario& scenario : scenarios) {
        SCOPED_TRACE(scenario.name);
        start(scenario.start);
        apply(Desk("A"));
        for (const Step& step : scenario.steps)
            apply(step);
        const ActivityReport report = recorder->report(2);
        qint64 recorded = 0;
        for (const DayTotals& day : report.days)
            for (qint64 ms : day.ms)
                recorded += ms;
        EXPECT_EQ(recorded, scheduler->now().count()) << "every moment counted exactly once";
        for (const Expected& want : scenario.days) {
            Expected got{want[0], -1};
            const auto minutes = [](const DayTotals& d, Posture p) { return int(d.of(p) / 60000); };
            for (const DayTotals& d : report.days)
                if (d.date == kFirstDay.addDays(want[0]))
                    got = {want[0], minutes(d, Posture::Sitting), minutes(d, Posture::Standing),
                           minutes(d, Posture::Away), d.transitions};
            EXPECT_EQ(got, want);
        }
        TearDown();
    }
}

TEST_F(ActivityRecorderTest, EachIntervalRemembersItsDeskAndTheStoreHasAllButTheLastMinute) {
    start(QTime(9, 0));
    for (const Step& step : {Desk("A"), Height(110), Wait(10min), Desk("B"), Wait(10min + 30s)})
        apply(step);
    const QList<ActivityInterval> stored = store->intervals(kFirstDay, kFirstDay);
    QStringList desks;
    for (const ActivityInterval& interval : stored)
        desks.append(interval.desk);
    EXPECT_EQ(desks, (QStringList{"", "A", "B"}));
    EXPECT_EQ(stored.last().durationMs, 10 * 60000) << "saved at the last full minute";
    EXPECT_EQ(recorder->intervals(kFirstDay, kFirstDay).last().durationMs, 10 * 60000 + 30000);
    recorder->finish();
    EXPECT_EQ(store->intervals(kFirstDay, kFirstDay).last().durationMs, 10 * 60000 + 30000);
}

TEST_F(ActivityRecorderTest, TheThresholdFollowsThePresetsUnlessSetAndTheGoalMovesInQuarters) {
    start(QTime(9, 0));
    EXPECT_EQ(recorder->thresholdCm(), 95.0);
    recorder->setPresets(70, 0);
    EXPECT_EQ(recorder->thresholdCm(), 95.0);
    recorder->setPresets(70, 110);
    EXPECT_EQ(recorder->thresholdCm(), 90.0);
    recorder->setThresholdSetting(100.5);
    EXPECT_EQ(recorder->thresholdCm(), 100.5);
    const std::pair<qint64, qint64> goals[] = {
        {100 * 60000, 105 * 60000}, {1, 15 * 60000}, {24 * 3600000LL, 16 * 3600000LL}};
    for (const auto& [asked, kept] : goals) {
        recorder->setGoalMs(asked);
        EXPECT_EQ(recorder->goalMs(), kept);
    }
    recorder.reset();
    const ActivityReport saved = ActivityReport::fromStore(*store, kFirstDay, 1);
    EXPECT_EQ(saved.goalMs, 16 * 3600000LL);
    EXPECT_EQ(saved.thresholdCm, 100.5);
    // Reopened, the file still holds the chosen threshold, which outranks the presets.
    store.reset();
    store = std::make_unique<ActivityStore>(folder.filePath(QStringLiteral("1.sqlite")));
    recorder = std::make_unique<ActivityRecorder>(*store);
    recorder->setPresets(70, 110);
    EXPECT_EQ(recorder->thresholdCm(), 100.5);
}

// The session of a control screen on a virtual desk feeds the recorder; the control screen
// shows today's standing time against the goal.
class ActivityFeedTest : public SessionTest {};

TEST_F(ActivityFeedTest, TheControlScreenShowsTodaysStandingAndASessionEndEndsThePosture) {
    RecordedActivity activity;
    bindDesk({}, "72,110,0,0");
    openControl();
    session().moveTo(1100);
    advance(31min + 30s); // the crossing comes some 5 s into the move
    StandingProgressView* progress = control->standingProgress();
    EXPECT_FALSE(progress->isHidden());
    progress->refresh();
    EXPECT_EQ(progress->text(), QStringLiteral("Standing today 0:31 / 2:00"));
    EXPECT_EQ(progress->percent(), 26);
    control.reset(); // the session ends: no desk
    advance(31s);
    EXPECT_EQ(activity.recorder.posture(), Posture::Unknown);
}

// A process killed with SIGKILL while standing loses at most the minute since the last save.
TEST(ActivityKillTest, AKilledProcessLosesAtMostTheLastMinute) {
    QTemporaryDir folder;
    for (const qint64 killAfterS : {300, 437, 1259}) {
        SCOPED_TRACE(killAfterS);
        const QString path = folder.filePath(QStringLiteral("killed-%1.sqlite").arg(killAfterS));
        QProcess writer;
        writer.start(QStringLiteral(OSTREL_ACTIVITY_WRITER), {path});
        ASSERT_TRUE(writer.waitForStarted());
        QByteArray output;
        while (!output.contains(QByteArray::number(killAfterS * 1000) + '\n') &&
               writer.waitForReadyRead(10000))
            output += writer.readAllStandardOutput();
        ::kill(pid_t(writer.processId()), SIGKILL);
        ASSERT_TRUE(writer.waitForFinished());
        output += writer.readAllStandardOutput();
        const QList<QByteArray> lines = output.left(output.lastIndexOf('\n')).split('\n');
        const qint64 lastMs = lines.last().toLongLong();
        ASSERT_GE(lastMs, killAfterS * 1000);

        const ActivityStore reopened(path);
        ASSERT_TRUE(reopened.isWritable());
        const QDate day = ManualScheduler().wallNow().date();
        const qint64 kept = reopened.days(day, day).first().of(Posture::Standing);
        const qint64 lost = lastMs - kept;
        std::cout << "killed at " << lastMs / 1000 << " s of standing: " << double(lost) / 1000.0
                  << " s lost" << std::endl;
        // The step being taken when the kill came may have saved before printing its time.
        EXPECT_GE(lost, -1000);
        EXPECT_LE(lost, ActivityRecorder::kSaveInterval.count() + 1000);
    }
}

} // namespace
} // namespace ostrel::test
