#include "app/SingleInstance.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

// Two connections to the private session bus stand for two launches. A second launch of the
// real binary activating the first is the Wayland test's.
QDBusConnection launchConnection(const char* name) {
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QLatin1String(name));
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
