// The command-line verbs end to end: the real binary, run as a script would, against the
// application running in this process (as main runs it) on a virtual desk, on a private
// session bus. Real time: the application's own timers drive the desk.
#include "app/DeskCommandLine.h"

#include "RealTimeWait.h"
#include "app/AppDelegate.h"
#include "app/AppRunner.h"
#include "app/DemoDesks.h"
#include "app/OMBaseModalWindow.h"
#include "app/SingleInstance.h"
#include "session/DeskControlVC.h"
#include "session/DeskSession.h"
#include "session/GoToHeight.h"
#include "sim/VirtualDesk.h"
#include "store/ActivityStore.h"
#include "transport/screens/BluetoothSearchVC.h"
#include "transport/screens/DeskSearchRowView.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>

namespace ostrel::test {
namespace {

using Code = DeskCommandLine::ExitCode;
constexpr int kWaitMs = 20000;

bool waitUntil(const std::function<bool()>& condition, int timeoutMs = kWaitMs) {
    return test::waitUntil(condition, timeoutMs);
}

struct Outcome {
    int code = -1;
    QString out;
    QString err;
    qint64 elapsedMs = 0;
};

// Runs the binary with `arguments` while this process keeps answering the bus. Without a
// display, as in a script over ssh: a window system the verbs wrongly touched would fail them.
Outcome runVerb(const QStringList& arguments) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    process.setProcessEnvironment(environment);
    QElapsedTimer clock;
    clock.start();
    process.start(QStringLiteral(OSTREL_MOTION_BINARY), arguments);
    const bool finished =
        waitUntil([&] { return process.state() == QProcess::NotRunning; }, kWaitMs);
    Outcome outcome;
    outcome.elapsedMs = clock.elapsed();
    EXPECT_TRUE(finished) << arguments.join(' ').toStdString();
    outcome.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    outcome.out = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    outcome.err = QString::fromUtf8(process.readAllStandardError()).trimmed();
    return outcome;
}

TEST(DeskCommandLineTest, WithoutARunningApplicationEveryVerbSaysSo) {
    for (const QStringList& verb :
         {QStringList{"--status"}, QStringList{"--status", "--json"},
          QStringList{"--move-to", "100"}, QStringList{"--preset", "sit"}, QStringList{"--stop"},
          QStringList{"--up"}, QStringList{"--down"}, QStringList{"--release"},
          QStringList{"--connect"}}) {
        const Outcome outcome = runVerb(verb);
        EXPECT_EQ(outcome.code, Code::kNotRunning) << verb.join(' ').toStdString();
        EXPECT_EQ(outcome.err, QStringLiteral("Ostrel Motion is not running."));
    }
    const Outcome help = runVerb({QStringLiteral("--help")});
    EXPECT_EQ(help.code, Code::kOk);
    for (const char* verb : {"--status", "--json", "--move-to <cm>", "--preset <name>", "--stop",
                             "--up", "--down", "--release", "--connect"})
        EXPECT_TRUE(help.out.contains(QLatin1String(verb))) << verb;
}

// Without the application, --stats reads the record in the data folder the binary uses, and
// leaves it as it was.
TEST(DeskCommandLineTest, StatsWithoutARunningApplicationReadTheFile) {
    const QString folder =
        qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/ostrel/ostrel-motion");
    QDir().mkpath(folder);
    const QString path = folder + QLatin1Char('/') + QLatin1String(ActivityStore::kFileName);
    const QDate today = QDate::currentDate();
    {
        ActivityStore store(path);
        const qint64 id = store.switchInterval(
            0, 0, {0, today, Posture::Standing, QDateTime(today, QTime(8, 0)), 0, {}, false, true});
        ASSERT_TRUE(store.saveDuration(id, 30 * 60000, true));
    }
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();

    const Outcome json = runVerb({"--stats", "--json", "--days", "3"});
    EXPECT_EQ(json.code, Code::kOk) << json.err.toStdString();
    const QJsonObject object = QJsonDocument::fromJson(json.out.toUtf8()).object();
    EXPECT_EQ(object.value("today").toObject().value("date"), today.toString(Qt::ISODate));
    EXPECT_EQ(object.value("today").toObject().value("standing_s"), 1800);
    EXPECT_EQ(object.value("goal_s"), 7200);
    EXPECT_EQ(object.value("threshold_cm"), 95);
    EXPECT_EQ(object.value("days").toArray().size(), 3);
    const Outcome text = runVerb({"--stats"});
    EXPECT_TRUE(text.out.startsWith(QStringLiteral("Today: standing 0:30 of 2:00")))
        << text.out.toStdString();
    EXPECT_EQ(runVerb({"--stats", "--days", "0"}).code, Code::kInvalidArgument);
    file.seek(0);
    EXPECT_EQ(file.readAll(), before);
}

class RunningApplicationTest : public ::testing::Test {
protected:
    void SetUp() override {
        instance = std::make_unique<SingleInstance>(QDBusConnection::sessionBus());
        ASSERT_TRUE(instance->claim()) << "needs a session bus: run under dbus-run-session";
        runner = std::make_unique<AppRunner>(true);
        desk = runner->demo()->desks().first();
    }

    void TearDown() override {
        runner.reset();
        instance.reset();
    }

    void run(const std::function<void()>& scenario) {
        QTimer::singleShot(0, qApp, [&] {
            scenario();
            QApplication::quit();
        });
        runner->exec();
    }

    QWidget* content() const { return runner->delegate().modalWindow()->content(); }
    DeskControlVC* control() const { return qobject_cast<DeskControlVC*>(content()); }

    void pairDesk() {
        ASSERT_TRUE(waitUntil([&] {
            auto* search = qobject_cast<BluetoothSearchVC*>(content());
            for (DeskSearchRowView* row : search ? search->rows() : QList<DeskSearchRowView*>{})
                if (row->title() == desk->name()) {
                    emit row->clicked();
                    return true;
                }
            return false;
        }));
        ASSERT_TRUE(waitUntil([&] {
            return control() && desk->isSubscribed() && control()->session().currentHeight() > 0;
        }));
    }

    std::unique_ptr<SingleInstance> instance;
    std::unique_ptr<AppRunner> runner;
    VirtualDesk* desk = nullptr;
};

TEST_F(RunningApplicationTest, VerbsDriveTheDeskAndFailWithDistinctCodes) {
    run([&] {
        // Running, but still searching for a desk.
        for (const QStringList& verb :
             {QStringList{"--status"}, QStringList{"--move-to", "100"}, QStringList{"--stop"}}) {
            const Outcome outcome = runVerb(verb);
            EXPECT_EQ(outcome.code, Code::kNotConnected) << verb.join(' ').toStdString();
            EXPECT_EQ(outcome.err, QStringLiteral("No desk is connected."));
        }
        const Outcome offline = runVerb({QStringLiteral("--status"), QStringLiteral("--json")});
        EXPECT_EQ(offline.code, Code::kNotConnected);
        EXPECT_EQ(QJsonDocument::fromJson(offline.out.toUtf8()).object().value("connected"), false);

        ASSERT_NO_FATAL_FAILURE(pairDesk());
        const Outcome status = runVerb({QStringLiteral("--status")});
        EXPECT_EQ(status.code, Code::kOk);
        // A fresh installation shows inches; so does the answer.
        EXPECT_EQ(status.out, QStringLiteral("QWJ-0001: 28.3 in, still"));
        const Outcome json = runVerb({QStringLiteral("--status"), QStringLiteral("--json")});
        const QJsonObject object = QJsonDocument::fromJson(json.out.toUtf8()).object();
        EXPECT_EQ(json.code, Code::kOk);
        EXPECT_EQ(object.value("desk"), QStringLiteral("QWJ-0001"));
        EXPECT_EQ(object.value("height_cm").toDouble(), 72.0);
        EXPECT_EQ(object.value("unit"), QStringLiteral("in"));
        EXPECT_EQ(object.value("presets").toObject().value("sit"), 0);

        // Standing time from the running application, today included.
        const Outcome stats = runVerb({QStringLiteral("--stats"), QStringLiteral("--json")});
        EXPECT_EQ(stats.code, Code::kOk);
        const QJsonObject figures = QJsonDocument::fromJson(stats.out.toUtf8()).object();
        EXPECT_EQ(figures.value("today").toObject().value("date"),
                  QDate::currentDate().toString(Qt::ISODate));
        EXPECT_EQ(figures.value("goal_s"), 7200);
        EXPECT_EQ(figures.value("days").toArray().size(), 7);

        for (const QStringList& bad :
             {QStringList{"--move-to", "tall"}, QStringList{"--move-to", "130"},
              QStringList{"--move-to", "nan"}, QStringList{"--preset", "desk"}}) {
            const Outcome outcome = runVerb(bad);
            EXPECT_EQ(outcome.code, Code::kInvalidArgument) << bad.join(' ').toStdString();
            EXPECT_FALSE(outcome.err.isEmpty());
        }
        const Outcome unset = runVerb({QStringLiteral("--preset"), QStringLiteral("m2")});
        EXPECT_EQ(unset.code, Code::kFailed);
        EXPECT_EQ(unset.err, QStringLiteral("The m2 preset is not set."));
        EXPECT_FALSE(desk->isMoving());

        const Outcome move = runVerb({QStringLiteral("--move-to"), QStringLiteral("76")});
        EXPECT_EQ(move.code, Code::kOk);
        EXPECT_EQ(move.out, QStringLiteral("Moving to 76.0 cm"));
        GoToHeight& goTo = control()->session().goToHeight();
        EXPECT_TRUE(waitUntil([&] { return !goTo.isMoving() && !desk->isMoving(); }));
        EXPECT_LE(std::abs(desk->heightTenths() - 760), 5);

        // The hot keys' toggle, for the desktop's own keyboard settings to bind.
        const Outcome up = runVerb({QStringLiteral("--up")});
        EXPECT_EQ(up.code, Code::kOk);
        EXPECT_EQ(up.out, QStringLiteral("Moving up"));
        EXPECT_TRUE(waitUntil([&] { return desk->isMoving(); }));
        const Outcome again = runVerb({QStringLiteral("--up")});
        EXPECT_EQ(again.out, QStringLiteral("Stopped"));
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }, 500));

        ASSERT_EQ(runVerb({QStringLiteral("--move-to"), QStringLiteral("90")}).code, Code::kOk);
        ASSERT_TRUE(waitUntil([&] { return desk->heightTenths() > 780; }));
        const Outcome stop = runVerb({QStringLiteral("--stop")});
        EXPECT_EQ(stop.code, Code::kOk);
        EXPECT_EQ(stop.out, QStringLiteral("Stopped"));
        EXPECT_FALSE(goTo.isMoving());
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }, 200));
        EXPECT_LT(desk->heightTenths(), 890);
        // A stopped move leaves nothing that swallows the next hot-key movement.
        EXPECT_EQ(runVerb({QStringLiteral("--up")}).out, QStringLiteral("Moving up"));
        EXPECT_TRUE(waitUntil([&] { return desk->isMoving(); }));
        EXPECT_EQ(runVerb({QStringLiteral("--up")}).out, QStringLiteral("Stopped"));

        // Released for the phone app: status and moves exit 4 until --connect links it again.
        EXPECT_EQ(runVerb({QStringLiteral("--release")}).out, QStringLiteral("Desk released"));
        EXPECT_TRUE(waitUntil([&] { return !desk->isSubscribed(); }, 3000));
        for (const char* verb : {"--status", "--stop", "--up"}) {
            const Outcome outcome = runVerb({QLatin1String(verb)});
            EXPECT_EQ(outcome.code, Code::kNotConnected) << verb;
            EXPECT_TRUE(outcome.err.contains(QStringLiteral("released"))) << verb;
        }
        EXPECT_EQ(runVerb({QStringLiteral("--connect")}).code, Code::kOk);
        EXPECT_TRUE(waitUntil([&] { return control()->session().isConnected(); }));

        // How long a script waits for --status.
        std::vector<qint64> times;
        for (int run = 0; run < 20; ++run) {
            const Outcome timed = runVerb({QStringLiteral("--status")});
            EXPECT_EQ(timed.code, Code::kOk);
            times.push_back(timed.elapsedMs);
        }
        std::sort(times.begin(), times.end());
        std::printf("--status answered after %lld ms (median of 20; fastest %lld, slowest %lld)\n",
                    static_cast<long long>((times[9] + times[10]) / 2),
                    static_cast<long long>(times.front()), static_cast<long long>(times.back()));
    });
}

} // namespace
} // namespace ostrel::test
