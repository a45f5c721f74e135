#include "app/SingleInstance.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace ostrel {
namespace {

// Two connections to the private session bus stand for two launches.
QDBusConnection launchConnection(const char* name) {
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QLatin1String(name));
}

TEST(SingleInstanceTest, SecondLaunchActivatesTheFirstAndDoesNotRun) {
    SingleInstance first(launchConnection("first-launch"));
    ASSERT_TRUE(first.claim()) << "needs a session bus: run under dbus-run-session";
    QSignalSpy activated(&first, &SingleInstance::activated);

    SingleInstance second(launchConnection("second-launch"));
    EXPECT_FALSE(second.claim());
    EXPECT_TRUE(second.activateRunning());
    EXPECT_EQ(activated.count(), 1);
}

TEST(SingleInstanceTest, NameIsFreeAgainAfterTheFirstExits) {
    {
        SingleInstance first(launchConnection("earlier-run"));
        ASSERT_TRUE(first.claim());
    }
    SingleInstance next(launchConnection("later-run"));
    EXPECT_TRUE(next.claim());
}

TEST(SingleInstanceTest, WithoutABusEveryLaunchRunsAndNobodyAnswers) {
    SingleInstance lonely(QDBusConnection(QStringLiteral("no-such-connection")));
    EXPECT_TRUE(lonely.claim());
    EXPECT_FALSE(lonely.activateRunning());
}

} // namespace
} // namespace ostrel
