// The command-line verbs end to end: the real binary, run as a script would, against the
// application running in this process (as main runs it) on a virtual desk, on a private
// session bus. Real time: the application's own timers drive the desk.
#include "app/DeskCommandLine.h"

#include "RunningAppTest.h"
#include "app/SingleInstance.h"
#include "session/GoToHeight.h"
#include "store/ActivityStore.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <algorithm>
#include <cstdio>

namespace ostrel::test {
namespace {

using Code = DeskCommandLine::ExitCode;

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
        waitUntil([&] { return process.state() == QProcess::NotRunning; }, kAppWaitMs);
    Outcome outcome;
    outcome.elapsedMs = clock.elapsed();
    EXPECT_TRUE(finished) << arguments.join(' ').toStdString();
    outcome.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    outcome.out = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    outcome.err = QString::fromUtf8(process.readAllStandardError()).trimmed();
    return outcome;
}

// Runs the verb and checks its exit code and, where given, what it wrote to standard output and
// to standard error.
Outcome expectVerb(const QStringList& arguments, int code, const char* out = nullptr,
                   const char* err = nullptr) {
    Outcome outcome = runVerb(arguments);
    const std::string verb = arguments.join(' ').toStdString();
    EXPECT_EQ(outcome.code, code) << verb;
    EXPECT_EQ(outcome.out, out ? QString::fromUtf8(out) : outcome.out) << verb;
    EXPECT_EQ(outcome.err, err ? QString::fromUtf8(err) : outcome.err) << verb;
    return outcome;
}

QJsonObject json(const Outcome& outcome) {
    return QJsonDocument::fromJson(outcome.out.toUtf8()).object();
}

TEST(DeskCommandLineTest, WithoutARunningApplicationEveryVerbSaysSo) {
    for (const QStringList& verb :
         {QStringList{"--status"}, QStringList{"--status", "--json"},
          QStringList{"--move-to", "100"}, QStringList{"--preset", "sit"}, QStringList{"--stop"},
          QStringList{"--up"}, QStringList{"--down"}, QStringList{"--release"},
          QStringList{"--connect"}})
        expectVerb(verb, Code::kNotRunning, nullptr, "Ostrel Motion is not running.");
    const Outcome help = expectVerb({"--help"}, Code::kOk);
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

    const QJsonObject object = json(expectVerb({"--stats", "--json", "--days", "3"}, Code::kOk));
    EXPECT_EQ(object.value("today").toObject().value("date"), today.toString(Qt::ISODate));
    EXPECT_EQ(object.value("today").toObject().value("standing_s"), 1800);
    EXPECT_EQ(object.value("goal_s"), 7200);
    EXPECT_EQ(object.value("threshold_cm"), 95);
    EXPECT_EQ(object.value("days").toArray().size(), 3);
    const Outcome text = runVerb({"--stats"});
    EXPECT_TRUE(text.out.startsWith(QStringLiteral("Today: standing 0:30 of 2:00")))
        << text.out.toStdString();
    expectVerb({"--stats", "--days", "0"}, Code::kInvalidArgument);
    file.seek(0);
    EXPECT_EQ(file.readAll(), before);
}

class RunningApplicationTest : public RunningAppTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(instance.claim()) << "needs a session bus: run under dbus-run-session";
        RunningAppTest::SetUp();
    }

    SingleInstance instance{QDBusConnection::sessionBus()};
};

TEST_F(RunningApplicationTest, VerbsDriveTheDeskAndFailWithDistinctCodes) {
    run([&] {
        // Running, but still searching for a desk.
        for (const QStringList& verb :
             {QStringList{"--status"}, QStringList{"--move-to", "100"}, QStringList{"--stop"}})
            expectVerb(verb, Code::kNotConnected, nullptr, "No desk is connected.");
        EXPECT_EQ(json(expectVerb({"--status", "--json"}, Code::kNotConnected)).value("connected"),
                  false);

        ASSERT_NO_FATAL_FAILURE(pairDesk());
        // A fresh installation shows inches; so does the answer.
        expectVerb({"--status"}, Code::kOk, "QWJ-0001: 28.3 in, still");
        const QJsonObject object = json(expectVerb({"--status", "--json"}, Code::kOk));
        EXPECT_EQ(object.value("desk"), QStringLiteral("QWJ-0001"));
        EXPECT_EQ(object.value("height_cm").toDouble(), 72.0);
        EXPECT_EQ(object.value("unit"), QStringLiteral("in"));
        EXPECT_EQ(object.value("presets").toObject().value("sit"), 0);

        // Standing time from the running application, today included.
        const QJsonObject figures = json(expectVerb({"--stats", "--json"}, Code::kOk));
        EXPECT_EQ(figures.value("today").toObject().value("date"),
                  QDate::currentDate().toString(Qt::ISODate));
        EXPECT_EQ(figures.value("goal_s"), 7200);
        EXPECT_EQ(figures.value("days").toArray().size(), 7);

        for (const QStringList& bad :
             {QStringList{"--move-to", "tall"}, QStringList{"--move-to", "130"},
              QStringList{"--move-to", "nan"}, QStringList{"--preset", "desk"}})
            EXPECT_FALSE(expectVerb(bad, Code::kInvalidArgument).err.isEmpty());
        expectVerb({"--preset", "m2"}, Code::kFailed, nullptr, "The m2 preset is not set.");
        EXPECT_FALSE(desk->isMoving());

        expectVerb({"--move-to", "76"}, Code::kOk, "Moving to 76.0 cm");
        GoToHeight& goTo = control()->session().goToHeight();
        EXPECT_TRUE(waitFor([&] { return !goTo.isMoving() && !desk->isMoving(); }));
        EXPECT_LE(std::abs(desk->heightTenths() - 760), 5);

        // The hot keys' toggle, for the desktop's own keyboard settings to bind.
        expectVerb({"--up"}, Code::kOk, "Moving up");
        EXPECT_TRUE(waitFor([&] { return desk->isMoving(); }));
        expectVerb({"--up"}, Code::kOk, "Stopped");
        EXPECT_TRUE(waitFor([&] { return !desk->isMoving(); }, 500));

        ASSERT_EQ(runVerb({"--move-to", "90"}).code, Code::kOk);
        ASSERT_TRUE(waitFor([&] { return desk->heightTenths() > 780; }));
        expectVerb({"--stop"}, Code::kOk, "Stopped");
        EXPECT_FALSE(goTo.isMoving());
        EXPECT_TRUE(waitFor([&] { return !desk->isMoving(); }, 200));
        EXPECT_LT(desk->heightTenths(), 890);
        // A stopped move leaves nothing that swallows the next hot-key movement.
        expectVerb({"--up"}, Code::kOk, "Moving up");
        EXPECT_TRUE(waitFor([&] { return desk->isMoving(); }));
        expectVerb({"--up"}, Code::kOk, "Stopped");

        // Released for the phone app: status and moves exit 4 until --connect links it again.
        expectVerb({"--release"}, Code::kOk, "Desk released");
        EXPECT_TRUE(waitFor([&] { return !desk->isSubscribed(); }, 3000));
        for (const char* verb : {"--status", "--stop", "--up"})
            EXPECT_TRUE(expectVerb({verb}, Code::kNotConnected).err.contains("released")) << verb;
        expectVerb({"--connect"}, Code::kOk);
        EXPECT_TRUE(waitFor([&] { return control()->session().isConnected(); }));

        // How long a script waits for --status.
        std::vector<qint64> times;
        for (int run = 0; run < 20; ++run)
            times.push_back(expectVerb({"--status"}, Code::kOk).elapsedMs);
        std::sort(times.begin(), times.end());
        std::printf("--status answered after %lld ms (median of 20; fastest %lld, slowest %lld)\n",
                    static_cast<long long>((times[9] + times[10]) / 2),
                    static_cast<long long>(times.front()), static_cast<long long>(times.back()));
    });
}

} // namespace
} // namespace ostrel::test
