// The user's presence from the desktop's services: Mutter's idle monitor and the two screen
// lockers (tools/desktop-standins) on the session bus, logind's session on a bus of its own.
// Each says away and back, and a service that leaves the bus takes its word with it.
#include "app/RealTimeWait.h"
#include "platform/DesktopPresence.h"
#include "platform/LogindLockedHint.h"
#include "platform/MutterIdleMonitor.h"
#include "platform/ScreenSaverLock.h"
#include "support/LogindStandin.h"

#include <QDBusConnectionInterface>
#include <QProcess>
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <ostream>

namespace ostrel::test {
namespace {

using namespace std::chrono_literals;

constexpr int kWaitMs = 5000;
const QString kLogind = QString::fromLatin1(LogindLockedHint::kService);
const QString kControl = QStringLiteral("com.ostrel.PresenceStandin");

class PresenceTest : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        desktop.start(QStringLiteral(OSTREL_PRESENCE_STANDIN), {});
        // Its control comes on the bus last.
        ASSERT_TRUE(
            waitUntil([] { return bus().interface()->isServiceRegistered(kControl); }, kWaitMs))
            << "run under dbus-run-session";
    }
    void TearDown() override {
        desktop.terminate();
        desktop.waitForFinished();
    }

    static constexpr const char* kMutter = MutterIdleMonitor::kService;
    // The sources' own connection, so that a call reaches the stand-in after theirs.
    static QDBusConnection bus() { return QDBusConnection::sessionBus(); }
    static void control(const char* method, const QVariantList& arguments = {}) {
        QDBusMessage call = QDBusMessage::createMethodCall(
            kControl, u'/' + QString(kControl).replace(u'.', u'/'), kControl, method);
        call.setArguments(arguments);
        ASSERT_EQ(bus().call(call).type(), QDBusMessage::ReplyMessage) << method;
    }

    std::unique_ptr<PresenceSource> source(const QString& service) {
        if (service == kLogind)
            return std::make_unique<LogindLockedHint>(logind.client());
        if (service == QLatin1String(kMutter))
            return std::make_unique<MutterIdleMonitor>(bus());
        return std::make_unique<ScreenSaverLock>(bus(), GetParam());
    }
    void tell(const QString& service, bool away) {
        if (service == kLogind)
            logind.setLocked(away);
        else if (service != QLatin1String(kMutter))
            control("Lock", {service, away});
        else if (away)
            control("Idle", {quint64(Presence::kDefaultAwayAfter.count())});
        else
            control("Input");
    }
    void show(const QString& service, bool onBus) {
        if (service != kLogind)
            control("SetOnBus", {service, onBus});
        else if (onBus)
            logind.service().registerService(service);
        else
            logind.service().unregisterService(service);
    }
    bool becomes(bool present) {
        return waitUntil([&] { return presence.isPresent() == present; }, kWaitMs);
    }

    QProcess desktop;
    QElapsedTimer clock;
    LogindStandin logind{clock};
    DesktopPresence presence;
    QSignalSpy changes{&presence, &Presence::presentChanged};
};

TEST_P(PresenceTest, AwayAndBackAndPresentOnceTheServiceLeaves) {
    const QString service = QString::fromLatin1(GetParam());
    presence.add(source(service));
    tell(service, true);
    ASSERT_TRUE(becomes(false));
    tell(service, false);
    ASSERT_TRUE(becomes(true));

    tell(service, true);
    ASSERT_TRUE(becomes(false));
    show(service, false);
    EXPECT_TRUE(becomes(true)) << "a service gone from the bus still keeps the user away";
    // Back on the bus, still saying away (Mutter: idle before its watch began): asked again.
    show(service, true);
    if (service == QLatin1String(kMutter))
        tell(service, true);
    EXPECT_TRUE(becomes(false));
    EXPECT_EQ(changes.count(), 5);
}

INSTANTIATE_TEST_SUITE_P(Sources, PresenceTest,
                         ::testing::Values(MutterIdleMonitor::kService,
                                           ScreenSaverLock::kFreedesktop, ScreenSaverLock::kGnome,
                                           LogindLockedHint::kService),
                         [](const ::testing::TestParamInfo<const char*>& row) {
                             return QString::fromLatin1(row.param).remove(u'.').toStdString();
                         });

// Locked while idle: unlocking leaves the user away until the first input. A lock and an
// unlock in one go are both seen, and end present. A new idle limit replaces the watch.
TEST_F(PresenceTest, AwayWhileAnySourceSaysSo) {
    const QVariantList lock{QString::fromLatin1(ScreenSaverLock::kGnome), true};
    const QVariantList unlock{lock.first(), false};
    presence.add(std::make_unique<MutterIdleMonitor>(bus()));
    auto owned = std::make_unique<ScreenSaverLock>(bus(), ScreenSaverLock::kGnome);
    const ScreenSaverLock& locker = *owned;
    presence.add(std::move(owned));
    tell(QString::fromLatin1(kMutter), true); // the idle watch is set once it has fired
    ASSERT_TRUE(becomes(false));
    tell(QString::fromLatin1(kMutter), false);
    ASSERT_TRUE(becomes(true));

    control("Lock", lock);
    control("Lock", unlock);
    ASSERT_TRUE(waitUntil([&] { return changes.count() == 4; }, kWaitMs));
    EXPECT_TRUE(presence.isPresent());

    presence.setAwayAfter(2min);
    control("Idle", {quint64(120'000)});
    control("Lock", lock);
    ASSERT_TRUE(becomes(false));
    control("Lock", unlock);
    ASSERT_TRUE(waitUntil([&] { return !locker.isAway(); }, kWaitMs));
    EXPECT_FALSE(presence.isPresent()) << "unlocked but idle, and present";
    control("Input");
    EXPECT_TRUE(becomes(true));
}

} // namespace
} // namespace ostrel::test
