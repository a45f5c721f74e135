// The user's presence from the desktop's services, each stood in for on a private bus: Mutter's
// idle monitor, the two screen lockers and logind's session. Each says away and back, and a
// service that leaves the bus takes its word with it.
#include "app/RealTimeWait.h"
#include "platform/DesktopPresence.h"
#include "platform/LogindLockedHint.h"
#include "platform/MutterIdleMonitor.h"
#include "platform/ScreenSaverLock.h"
#include "support/IdleMonitorStandin.h"
#include "support/LogindStandin.h"
#include "support/ScreenSaverStandin.h"

#include <QSignalSpy>
#include <functional>
#include <gtest/gtest.h>
#include <ostream>

namespace ostrel::test {
namespace {

using namespace std::chrono_literals;

constexpr int kWaitMs = 5000;
constexpr quint64 kLimitMs = 300'000;

// Every stand-in on the one private bus that logind's stand-in runs.
struct Desktop {
    QElapsedTimer clock;
    LogindStandin logind{clock};
    IdleMonitorStandin mutter{logind.connection(QStringLiteral("mutter"))};
    ScreenSaverStandin freedesktop{logind.connection(QStringLiteral("freedesktop")),
                                   QString::fromLatin1(ScreenSaverLock::kFreedesktop)};
    ScreenSaverStandin gnome{logind.connection(QStringLiteral("gnome")),
                             QString::fromLatin1(ScreenSaverLock::kGnome)};

    ~Desktop() {
        for (const char* name : {"mutter", "freedesktop", "gnome"})
            QDBusConnection::disconnectFromBus(QString::fromLatin1(name));
    }
};

struct SourceCase {
    const char* name;
    std::function<std::unique_ptr<PresenceSource>(const QDBusConnection&)> make;
    std::function<void(Desktop&, bool away)> tell;
    std::function<void(Desktop&, bool onBus)> show;
};

void PrintTo(const SourceCase& row, std::ostream* out) {
    *out << row.name;
}

class PresenceTest : public ::testing::TestWithParam<SourceCase> {
protected:
    bool becomes(bool present) {
        return waitUntil([&] { return presence.isPresent() == present; }, kWaitMs);
    }

    Desktop desktop;
    DesktopPresence presence;
    QSignalSpy changes{&presence, &Presence::presentChanged};
};

TEST_P(PresenceTest, AwayAndBackAndPresentOnceTheServiceLeaves) {
    Desktop& d = desktop;
    presence.add(GetParam().make(d.logind.client()));
    GetParam().tell(d, true);
    ASSERT_TRUE(becomes(false));
    GetParam().tell(d, false);
    ASSERT_TRUE(becomes(true));

    GetParam().tell(d, true);
    ASSERT_TRUE(becomes(false));
    GetParam().show(d, false);
    EXPECT_TRUE(becomes(true)) << "a service gone from the bus still keeps the user away";
    // Back on the bus, still saying away: asked again.
    GetParam().show(d, true);
    EXPECT_TRUE(becomes(false));
    EXPECT_EQ(changes.count(), 5);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, PresenceTest,
    ::testing::Values(
        SourceCase{
            "MutterIdle",
            [](const QDBusConnection& bus) { return std::make_unique<MutterIdleMonitor>(bus); },
            [](Desktop& d, bool away) {
                // A watch fires only once the source has set it.
                ASSERT_TRUE(waitUntil(
                    [&] {
                        return away ? !d.mutter.idleWatches().empty() : d.mutter.watchesForInput();
                    },
                    kWaitMs));
                if (away)
                    d.mutter.idleFor(kLimitMs);
                else
                    d.mutter.input();
            },
            [](Desktop& d, bool onBus) { onBus ? d.mutter.appear() : d.mutter.vanish(); }},
        SourceCase{"FreedesktopLocker",
                   [](const QDBusConnection& bus) {
                       return std::make_unique<ScreenSaverLock>(bus, ScreenSaverLock::kFreedesktop);
                   },
                   [](Desktop& d, bool away) { d.freedesktop.setActive(away); },
                   [](Desktop& d, bool onBus) {
                       onBus ? d.freedesktop.appear() : d.freedesktop.vanish();
                   }},
        SourceCase{"GnomeLocker",
                   [](const QDBusConnection& bus) {
                       return std::make_unique<ScreenSaverLock>(bus, ScreenSaverLock::kGnome);
                   },
                   [](Desktop& d, bool away) { d.gnome.setActive(away); },
                   [](Desktop& d, bool onBus) { onBus ? d.gnome.appear() : d.gnome.vanish(); }},
        SourceCase{
            "LogindLockedHint",
            [](const QDBusConnection& bus) { return std::make_unique<LogindLockedHint>(bus); },
            [](Desktop& d, bool away) { d.logind.setLocked(away); },
            [](Desktop& d, bool onBus) {
                const QString name = QStringLiteral("org.freedesktop.login1");
                onBus ? d.logind.service().registerService(name)
                      : d.logind.service().unregisterService(name);
            }}),
    [](const ::testing::TestParamInfo<SourceCase>& row) { return std::string(row.param.name); });

// Locked while idle: unlocking leaves the user away until the first input. A lock and an
// unlock in one go are both seen, and end present.
TEST_F(PresenceTest, AwayWhileAnySourceSaysSo) {
    presence.add(std::make_unique<MutterIdleMonitor>(desktop.logind.client()));
    auto owned =
        std::make_unique<ScreenSaverLock>(desktop.logind.client(), ScreenSaverLock::kFreedesktop);
    const ScreenSaverLock& locker = *owned;
    presence.add(std::move(owned));
    ASSERT_TRUE(waitUntil([&] { return !desktop.mutter.idleWatches().empty(); }, kWaitMs));

    desktop.freedesktop.setActive(true);
    desktop.freedesktop.setActive(false);
    ASSERT_TRUE(waitUntil([&] { return changes.count() == 2; }, kWaitMs));
    EXPECT_TRUE(presence.isPresent());

    desktop.mutter.idleFor(kLimitMs);
    desktop.freedesktop.setActive(true);
    ASSERT_TRUE(becomes(false));
    desktop.freedesktop.setActive(false);
    ASSERT_TRUE(waitUntil([&] { return !locker.isAway(); }, kWaitMs));
    EXPECT_FALSE(presence.isPresent()) << "unlocked but idle, and present";
    ASSERT_TRUE(waitUntil([&] { return desktop.mutter.watchesForInput(); }, kWaitMs));
    desktop.mutter.input();
    EXPECT_TRUE(becomes(true));
}

// A new limit replaces the idle watch rather than adding one.
TEST_F(PresenceTest, ANewIdleLimitMovesTheWatch) {
    presence.add(std::make_unique<MutterIdleMonitor>(desktop.logind.client()));
    ASSERT_TRUE(waitUntil([&] { return !desktop.mutter.idleWatches().empty(); }, kWaitMs));
    presence.setAwayAfter(2min);
    EXPECT_TRUE(waitUntil(
        [&] { return desktop.mutter.idleWatches() == std::vector<quint64>{120'000}; }, kWaitMs));
    desktop.mutter.idleFor(120'000);
    EXPECT_TRUE(becomes(false));
}

} // namespace
} // namespace ostrel::test
