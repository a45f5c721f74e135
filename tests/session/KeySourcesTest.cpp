// Every source of keys cutting in on every other, on a virtual desk in virtual time, checked on
// the desk's side: which key each of its polls was answered with, and that no key frame ever
// came unasked.
#include "SessionTestSupport.h"
#include "session/GlobalKeyDispatch.h"
#include "session/HotKeyMovement.h"
#include "settings/MemoryKeySequence.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMHoverButton.h"
#include "widgets/WidgetTestSupport.h"

#include <algorithm>
#include <functional>

namespace ostrel::test {
namespace {

using Ending = GoToHeight::Ending;

// The table's steps drive the fixture from outside: what they use is public.
class KeySourcesTest : public SessionTest {
public:
    using SessionTest::advance;
    using SessionTest::control;
    using SessionTest::session;

    void SetUp() override {
        SessionTest::SetUp();
        alertAnswer = 0; // a lost link leaves the session on screen
        desk = &bindDesk({}, "70,110,0,0");
        openControl();
        QObject::connect(&session().goToHeight(), &GoToHeight::finished, control.get(),
                         [this](Ending ending) { endings.push_back(ending); });
        sequence = new MemoryKeySequence(&session());
    }

    void hotKey(const char* name) {
        session().globalKeys().globalKeyPush(QString::fromLatin1(name));
    }
    void screenHold(QWidget* button, std::chrono::milliseconds length) {
        press(button);
        advance(length);
        release(button);
    }
    void moveTo(int tenths) { ASSERT_EQ(session().moveTo(tenths), GoToHeight::Refusal::None); }
    void storeM1() {
        sequence->start(command::presetKey(2), [this] { stored = true; });
    }
    // From here on, answers() reports what the desk is told.
    void mark() { from = desk->keyFrames().size(); }
    std::vector<int> answers() const { return answersSince(*desk, from); }
    bool answered(int type) const { return std::ranges::count(answers(), type) > 0; }
    bool sourcesIdle() {
        return !session().hotKeyMovement().isMoving() && !session().goToHeight().isMoving() &&
               !sequence->isRunning() && DeskSession::commandType() == command::kNoKey;
    }

    VirtualDesk* desk = nullptr;
    MemoryKeySequence* sequence = nullptr;
    bool stored = false;
    std::size_t from = 0;
    std::vector<Ending> endings;
};

using Step = std::function<void(KeySourcesTest&)>;

// `act`, then `wait` of virtual time.
Step waiting(const Step& act, std::chrono::milliseconds wait) {
    return [act, wait](KeySourcesTest& t) {
        act(t);
        t.advance(wait);
    };
}

struct Interleaving {
    const char* name;
    Step first;  // a source starts
    Step second; // another cuts in, after which the answers are watched
    Step check;
};

class KeySourcesTableTest : public KeySourcesTest,
                            public ::testing::WithParamInterface<Interleaving> {};

TEST_P(KeySourcesTableTest, TheLatestClaimDrivesTheDeskAndNoKeyComesUnasked) {
    GetParam().first(*this);
    mark();
    GetParam().second(*this);
    GetParam().check(*this);
    for (const VirtualDesk::KeyFrame& frame : desk->keyFrames())
        EXPECT_TRUE(frame.answeredPoll) << "key " << frame.keys << " at " << frame.at.count();
}

const Step hotKeyUp = waiting([](KeySourcesTest& t) { t.hotKey("GlobalKeyUp"); }, 500ms);
const Step moveUp = waiting([](KeySourcesTest& t) { t.moveTo(1100); }, 1s);
const Step storing = waiting([](KeySourcesTest& t) { t.storeM1(); }, 300ms);
const Step screenUp = waiting([](KeySourcesTest& t) { press(t.control->upButton()); }, 500ms);
const Step dropLink = waiting([](KeySourcesTest& t) { t.desk->dropLink(); }, 100ms);
const Step nothing = [](KeySourcesTest&) {};
const Step moveDown = waiting([](KeySourcesTest& t) { t.moveTo(620); }, 1s);
const Step stop = waiting([](KeySourcesTest& t) { t.session().stopMoving(); }, 1s);
const Step screenDownTap =
    waiting([](KeySourcesTest& t) { t.screenHold(t.control->downButton(), 300ms); }, 200ms);

// Stopped, the desk on its own move hears the key of its own direction once, then no key: it
// never dips or jumps the other way.
Step heardOnceThenNoKey(int key) {
    return [key](KeySourcesTest& t) {
        const std::vector<int> keys = t.answers();
        ASSERT_GE(keys.size(), 2u);
        EXPECT_EQ(keys[0], key);
        EXPECT_TRUE(std::all_of(keys.begin() + 1, keys.end(), [](int k) { return k == 0; }));
        EXPECT_FALSE(t.desk->isMoving());
    };
}

// A lost link ends whatever held the key, and nothing is left to answer the next link with.
const Step allIdle = [](KeySourcesTest& t) {
    EXPECT_TRUE(t.sourcesIdle());
    EXPECT_FALSE(t.stored);
    t.advance(3s);
    EXPECT_TRUE(t.sourcesIdle());
    EXPECT_TRUE(t.answers().empty());
};

const Interleaving kInterleavings[] = {
    {"ScreenPressDuringHotKeyMovement", hotKeyUp, screenDownTap,
     [](KeySourcesTest& t) {
         EXPECT_FALSE(t.session().hotKeyMovement().isMoving()) << "told that the screen took over";
         EXPECT_FALSE(t.desk->isMoving());
         // The next arrow starts a movement rather than ending one that no longer runs.
         const int before = t.desk->heightTenths();
         t.mark();
         t.hotKey("GlobalKeyUp");
         t.advance(1s);
         EXPECT_GT(t.desk->heightTenths(), before + 20);
         EXPECT_EQ(t.answers().front(), command::kUpKey);
     }},
    {"HotKeyDuringGoToHeight", moveUp,
     waiting([](KeySourcesTest& t) { t.hotKey("GlobalKeyDown"); }, 300ms),
     [](KeySourcesTest& t) {
         EXPECT_EQ(t.endings, std::vector{Ending::TookOver});
         EXPECT_FALSE(t.answered(command::kTargetHeight));
         EXPECT_FALSE(t.answered(command::kUpKey));
         const int height = t.desk->heightTenths();
         t.advance(3s);
         EXPECT_LE(t.desk->heightTenths(), height) << "the desk's own move up is over";
     }},
    // A hot-key movement cut by a move to a height, itself replaced by a second one: no Up that
    // nobody asked for, and the second move arrives.
    {"MoveToTwiceAfterAHotKeyMovement",
     waiting(
         [](KeySourcesTest& t) {
             hotKeyUp(t);
             t.moveTo(700);
         },
         300ms),
     [](KeySourcesTest& t) {
         t.moveTo(1000);
         for (int i = 0; i < 300 && t.session().goToHeight().isMoving(); ++i)
             t.advance(100ms);
     },
     [](KeySourcesTest& t) {
         EXPECT_FALSE(t.session().hotKeyMovement().isMoving());
         EXPECT_EQ(t.endings, (std::vector{Ending::Stopped, Ending::Arrived}));
         EXPECT_FALSE(t.answered(command::kUpKey));
         EXPECT_FALSE(t.answered(command::kDownKey));
         EXPECT_LE(std::abs(t.desk->heightTenths() - 1000), GoToHeight::kToleranceTenthsCm);
     }},
    // The desk's own move stops at the key; Down held on the screen never makes it dip.
    {"ScreenDownDuringGoToHeight", moveUp, screenDownTap,
     [](KeySourcesTest& t) {
         EXPECT_EQ(t.endings, std::vector{Ending::TookOver});
         EXPECT_EQ(t.answers().front(), command::kDownKey);
         EXPECT_FALSE(t.answered(command::kUpKey));
         EXPECT_FALSE(t.desk->isMoving());
     }},
    {"PresetDuringSettingsKeySequence", storing,
     [](KeySourcesTest& t) {
         t.session().presetKeys().holdPresetKey(0);
         t.advance(200ms);
         t.session().presetKeys().releasePresetKey();
         t.advance(3s);
     },
     [](KeySourcesTest& t) {
         EXPECT_FALSE(t.sequence->isRunning()) << "told that the preset took over";
         EXPECT_FALSE(t.stored);
         EXPECT_EQ(t.answers().front(), command::kSitKey);
         EXPECT_FALSE(t.answered(command::kMemoryKey));
         EXPECT_FALSE(t.answered(command::presetKey(2)));
         EXPECT_EQ(t.answers().back(), command::kNoKey) << "a preset held past two polls lets go";
     }},
    {"SettingsKeySequenceDuringScreenHold", screenUp,
     [](KeySourcesTest& t) {
         t.storeM1();
         t.advance(3s);
         release(t.control->upButton()); // the screen's claim is long gone
         t.advance(100ms);
     },
     [](KeySourcesTest& t) {
         EXPECT_TRUE(t.stored);
         EXPECT_EQ(t.answers().front(), command::kMemoryKey);
         EXPECT_FALSE(t.answered(command::kUpKey));
     }},
    {"StopDuringAMoveUp", moveUp, stop, heardOnceThenNoKey(command::kUpKey)},
    {"StopDuringAMoveDown", moveDown, stop, heardOnceThenNoKey(command::kDownKey)},
    // The desk takes a key held on from the stop's tap for the tap: it must hear no key between.
    {"HotKeyAtOnceAfterAStop", moveUp,
     waiting(
         [](KeySourcesTest& t) {
             t.session().stopMoving();
             t.hotKey("GlobalKeyUp");
         },
         1500ms),
     [](KeySourcesTest& t) {
         const std::vector<int> keys = t.answers();
         ASSERT_GE(keys.size(), 3u);
         EXPECT_EQ(keys[0], command::kUpKey);
         EXPECT_EQ(keys[1], command::kNoKey);
         EXPECT_TRUE(t.session().hotKeyMovement().isMoving());
         EXPECT_TRUE(t.desk->isMoving());
     }},
    // A tap shorter than a poll period still reaches the desk, twice.
    {"PresetClickOf25ms", nothing,
     waiting([](KeySourcesTest& t) { t.screenHold(t.control->presetButton(1), 25ms); }, 1s),
     [](KeySourcesTest& t) {
         const std::vector<int> keys = t.answers();
         EXPECT_GE(std::count(keys.begin(), keys.end(), command::kStandKey), 2);
     }},
    {"LinkLossDuringHotKeyMovement", hotKeyUp, dropLink, allIdle},
    {"LinkLossDuringGoToHeight", moveUp, dropLink, allIdle},
    {"LinkLossDuringSettingsKeySequence", storing, dropLink, allIdle},
    {"LinkLossDuringScreenHold", screenUp, dropLink, allIdle},
};

INSTANTIATE_TEST_SUITE_P(EveryPair, KeySourcesTableTest, ::testing::ValuesIn(kInterleavings),
                         [](const auto& testParam) { return std::string(testParam.param.name); });

} // namespace
} // namespace ostrel::test
