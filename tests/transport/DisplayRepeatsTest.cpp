#include "transport/DisplayRepeats.h"

#include "sim/DeskFrames.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

TEST(DisplayRepeatsTest, AnIdleDesksRepeatsThinOutButChangesReportsAndHeldKeysPassAtOnce) {
    DisplayRepeats repeats;
    std::string passed; // one mark a frame: '+' passed on, '.' held back
    auto feed = [&](const Bytes& frame, bool keyHeld, int times) {
        for (int i = 0; i < times; ++i)
            passed += repeats.passes(frame, keyHeld) ? '+' : '.';
        passed += ' ';
    };
    const Bytes at725 = DeskFrames::display(SegmentDisplay::height(725));
    const Bytes at726 = DeskFrames::display(SegmentDisplay::height(726));
    feed(at725, false, 7);
    feed(at726, false, 2);
    feed(DeskFrames::deviceInfo({}), false, 2);
    feed(at726, true, 3);
    feed(at726, false, 5);
    EXPECT_EQ(passed, "+....+. +. ++ +++ ....+ ");
}

} // namespace
} // namespace ostrel
