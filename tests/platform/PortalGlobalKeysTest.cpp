// The Wayland path through Debian's real xdg-desktop-portal on a private session bus, over a
// desktop's GlobalShortcuts implementation stand-in that a .portal file in tools/desktop-standins
// names: the keys are bound in a portal session with the chosen combination as the preferred
// trigger, the portal's Activated signal becomes the key's notification, and letting go closes
// the session.
#include "platform/PortalGlobalKeys.h"

#include "app/RealTimeWait.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "platform/Platform.h"
#include "session/DQGlobalKeyHelper.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QElapsedTimer>
#include <QProcess>
#include <cstdio>
#include <gtest/gtest.h>

namespace ostrel::test {
namespace {

constexpr int kWaitMs = 5000;

class PortalGlobalKeysTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "run under dbus-run-session";
        NotificationCenter::defaultCenter().addObserver(
            &observer, QString::fromLatin1(notifications::kGlobalKeyPushName),
            [this](const QVariant& name) { posted << name.toString(); });
    }
    void TearDown() override {
        DQGlobalKeyHelper::shareInstance().removeDeskGlobalHotKey();
        NotificationCenter::defaultCenter().removeObserver(&observer);
        for (QProcess* process : {&frontend, &backend}) {
            process->terminate();
            process->waitForFinished();
        }
    }

    static bool registered(const char* name) {
        return waitUntil(
            [name] {
                return QDBusConnection::sessionBus().interface()->isServiceRegistered(
                    QLatin1String(name));
            },
            kWaitMs);
    }

    // The implementation first: the frontend offers only the portals it finds running.
    void startPortal() {
        backend.start(QStringLiteral(OSTREL_PORTAL_BACKEND_STANDIN), {});
        ASSERT_TRUE(registered(kBackendName));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_DESKTOP_PORTAL_DIR"),
                           QStringLiteral(OSTREL_PORTALS_DIR));
        environment.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("ostreltest"));
        frontend.setProcessEnvironment(environment);
        frontend.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        frontend.start(QStringLiteral(XDG_DESKTOP_PORTAL), {QStringLiteral("--replace")});
        ASSERT_TRUE(registered(PortalGlobalKeys::kService));
    }

    QStringList ask(const char* method, const QString& argument = {}) {
        QDBusInterface control(QLatin1String(kBackendName), QStringLiteral("/standin"),
                               QStringLiteral("com.ostrel.test.PortalStandin"));
        return QDBusReply<QStringList>(argument.isEmpty() ? control.call(method)
                                                          : control.call(method, argument))
            .value();
    }

    bool waitForBindings(const QStringList& expected) {
        return waitUntil([&] { return ask("Bindings") == expected; }, kWaitMs);
    }

    static QStringList bindings(const char* modifiers) {
        QStringList lines;
        for (const auto& key : GlobalKeyBackend::kKeys)
            lines << QStringLiteral("%1 %2%3").arg(key.id).arg(QLatin1String(modifiers),
                                                               QLatin1String(key.trigger));
        return lines;
    }

    static constexpr char kBackendName[] = "org.freedesktop.impl.portal.desktop.ostreltest";
    QProcess backend;
    QProcess frontend;
    QObject observer;
    QStringList posted;
};

TEST_F(PortalGlobalKeysTest, KeysAreBoundInAPortalSessionAndActivationsPostTheirNames) {
    EXPECT_EQ(PortalGlobalKeys::create(), nullptr) << "no portal on the bus yet";
    QElapsedTimer startup;
    startup.start();
    ASSERT_NO_FATAL_FAILURE(startPortal());
    std::printf("portal frontend and backend up after %lld ms\n",
                static_cast<long long>(startup.elapsed()));
    auto portal = PortalGlobalKeys::create();
    ASSERT_NE(portal, nullptr);
    PlatformOverride<GlobalKeyBackend> installed(*portal);
    DQGlobalKeyHelper& helper = DQGlobalKeyHelper::shareInstance();
    EXPECT_TRUE(helper.isAvailable());

    helper.addDeskGlobalHotKeyWithCombineKeyType(GlobalKeyBackend::kAltSuper);
    ASSERT_TRUE(waitForBindings(bindings("ALT+LOGO+"))) << ask("Bindings").join(',').toStdString();
    ask("Activate", QStringLiteral("126"));
    ask("Activate", QStringLiteral("21"));
    EXPECT_TRUE(waitUntil([&] { return posted.size() == 2; }, kWaitMs));
    EXPECT_EQ(posted, QStringList({"GlobalKeyUp", "GlobalKeyFour"}));

    // Another combination: a new session; the old one is closed.
    helper.addDeskGlobalHotKeyWithCombineKeyType(GlobalKeyBackend::kCtrlSuper);
    EXPECT_TRUE(waitForBindings(bindings("CTRL+LOGO+")));
    EXPECT_EQ(ask("Closed").size(), 1);

    helper.removeDeskGlobalHotKey();
    EXPECT_TRUE(waitUntil([&] { return ask("Closed").size() == 2; }, kWaitMs));
    ask("Activate", QStringLiteral("126")); // in the closed session: heard by nobody

    helper.addDeskGlobalHotKeyWithCombineKeyType(GlobalKeyBackend::kShift);
    EXPECT_TRUE(waitForBindings(bindings("SHIFT+")));
    ask("Activate", QStringLiteral("18"));
    EXPECT_TRUE(waitUntil([&] { return posted.size() >= 3; }, kWaitMs));
    EXPECT_EQ(posted, QStringList({"GlobalKeyUp", "GlobalKeyFour", "GlobalKeyOne"}));
}

} // namespace
} // namespace ostrel::test
