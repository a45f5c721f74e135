#include "platform/AutostartEntry.h"

#include <gtest/gtest.h>

namespace ostrel::test {
namespace {

TEST(AutostartEntryTest, QuotesTheProgramPathAsDesktopEntriesWant) {
    EXPECT_TRUE(AutostartEntry::contents(QStringLiteral("/opt/My Apps/ostrel$1\\x"))
                    .contains("Exec=\"/opt/My Apps/ostrel\\$1\\\\x\" --hidden\n"));
}

} // namespace
} // namespace ostrel::test
