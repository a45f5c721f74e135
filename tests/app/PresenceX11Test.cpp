// Idle time from a real X server, which measures it itself (so this one runs in real time, with
// the shortest limit): no input makes the user away, xdotool's input brings them back.
#include "X11AppTest.h"
#include "platform/DesktopPresence.h"
#include "platform/X11IdleTime.h"

namespace ostrel::test {
namespace {

TEST(PresenceX11, AwayWithoutInputAndBackAtTheFirstInput) {
    auto source = X11IdleTime::create();
    ASSERT_NE(source, nullptr) << "the X server has no MIT-SCREEN-SAVER extension";
    DesktopPresence presence;
    presence.setAwayAfter(X11IdleTime::kShortestLimit);
    key("shift");
    presence.add(std::move(source));
    EXPECT_TRUE(presence.isPresent());

    EXPECT_TRUE(waitUntil([&] { return !presence.isPresent(); }));
    key("shift");
    EXPECT_TRUE(waitUntil([&] { return presence.isPresent(); }));
}

} // namespace
} // namespace ostrel::test
