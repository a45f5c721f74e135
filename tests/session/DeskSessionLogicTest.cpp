#include "SessionTestSupport.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "session/DeskHeightDisplay.h"
#include "session/DeskStatus.h"

namespace ostrel::test {
namespace {

TEST(DeskStatusTest, EachDisplayStateHasItsWordsAndItsErrorScreenCode) {
    struct Case {
        bool locked;
        const char* result;
        long code;
        const char* words; // the start of what the screen says; "" for nothing
    };
    const Case cases[] = {
        {false, "725", 0, ""},
        {false, "E01", 1, "Error E01: the desk is overheated. Wait 18 minutes"},
        {false, "E07", 7, "Error E07: the desk needs a reset. Hold Down until"},
        {false, "E10", 10, "Error E10: the desk reports a fault."},
        {false, "E30", 30, "Error E30: the six-axis sensor has failed."},
        {false, "E2B", DeskStatus::kCodeUnreadable, "Error E2B: the desk reports a fault."},
        {false, "RST", DeskStatus::kCodeReset, "Reset needed (RST): hold Down until the desk"},
        {false, "-OL", DeskStatus::kCodeSlideDown, "Slide-down warning (-0L)"},
        {true, "725", DeskStatus::kCodeChildLock, "Child lock (LOC)"}, // the lock comes first
        {true, "E10", DeskStatus::kCodeChildLock, "Child lock (LOC)"},
    };
    for (const Case& c : cases) {
        DeskStatus status;
        status.displayShown(c.locked, c.result);
        EXPECT_EQ(status.errorCode(), c.code) << c.result;
        const QString words = QString::fromUtf8(c.words);
        EXPECT_EQ(words.isEmpty() ? status.text() : status.text().left(words.size()), words)
            << c.result;
    }
}

TEST(DeskHeightDisplayTest, ReportsBelow580AreInchesAndTheUnitPicksTheText) {
    struct Case {
        const char* reported;
        bool inches;
        const char* text;
    };
    const Case cases[] = {
        {"285", false, "72.4cm"},  // 285 x 2.54 = 723.9
        {"579", false, "147.1cm"}, // still inches
        {"580", false, "58.0cm"},  // from here on centimetres
        {"725", false, "72.5cm"},  {"725", true, "28.5in"}, {"1200", true, "47.2in"},
    };
    for (const Case& c : cases) {
        const QString tenths = DeskHeightDisplay::normalisedHeight(QString::fromLatin1(c.reported));
        EXPECT_EQ(DeskHeightDisplay::heightText(tenths.toDouble(), c.inches), c.text) << c.reported;
    }
    EXPECT_EQ(DeskHeightDisplay::unknownHeightText(true), "0.0in");
}

TEST(DeskHeightDisplayTest, PictureOffsetsFollowTheModelsLegsAndStopAtTheLimits) {
    EXPECT_FLOAT_EQ(DeskHeightDisplay::legsForModel("d5pro").sec, 48.4f); // unknown: the default

    const auto legs = DeskHeightDisplay::legsForModel("D5");
    const auto low = DeskHeightDisplay::pictureOffsets(500.0f, 600, 1200, legs);
    EXPECT_FLOAT_EQ(low.top, legs.fir + legs.sec);
    EXPECT_FLOAT_EQ(low.middle, legs.sec);
    const auto high = DeskHeightDisplay::pictureOffsets(1300.0f, 600, 1200, legs);
    EXPECT_FLOAT_EQ(high.top, 0.0f);
    const auto half = DeskHeightDisplay::pictureOffsets(900.0f, 600, 1200, legs);
    EXPECT_FLOAT_EQ(half.middle, legs.sec / 2);
    const auto broken = DeskHeightDisplay::pictureOffsets(900.0f, 0, 0, legs);
    EXPECT_FLOAT_EQ(broken.top, 0.0f);
}

// The session with no desk on the air: every report is the test's own.
class DeskSessionLogicTest : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        alertAnswer = 0; // the no-link prompt stays open; the session lives on
    }
};

// While no height is known the user is asked to move the desk, and there is nothing to save.
TEST_F(DeskSessionLogicTest, SavedPresetIsTheShownHeightRoundedToWholeCentimetres) {
    storeRecord("70,0,0,95");
    openControl();
    session().refreshDeviceInfo();
    struct Case {
        int height;
        int type;
        const char* stored;
    };
    session().presetKeys().actionMemoryKeySaveWithtype(12);
    EXPECT_EQ(storedPresets(), "70,0,0,95") << "no height known yet: nothing to save";
    advance(DeskSession::kStartupToastDelay);
    EXPECT_EQ(toast(), "Connected successful, move the table to synchronize the height.");

    const Case cases[] = {
        {724, 10, "70,72,0,95"},
        {726, 11, "70,72,73,95"},
        {1004, 12, "70,72,73,100"},
        {805, 9, "80,72,73,100"}, // an exact half goes to the even number
        {800, 13, ""},            // not a preset key
    };
    for (const Case& c : cases) {
        report(c.height);
        session().presetKeys().actionMemoryKeySaveWithtype(c.type);
        EXPECT_EQ(inBothStores("memoryHeight"), c.stored) << c.height;
    }
    EXPECT_EQ(session().presetKeys().presets(), (CurrentDeviceStore::Presets{80, 72, 73, 100}))
        << "a malformed text leaves the presets as they were";
}

TEST_F(DeskSessionLogicTest, ConfirmationCountsOnceAndStillStoresWhenLate) {
    storeRecord("0,0,0,0");
    openControl();
    report(800);
    auto confirm = [] {
        BluetoothResultHandle::sharedInstance().bluetoothResultHandle_Manage("S-");
    };

    confirm(); // the desk's own keypad, no request from here: it must not touch the presets
    advance(PresetKeys::kMemoryKeyTap);
    EXPECT_EQ(toast(), QString());
    EXPECT_EQ(storedPresets(), "0,0,0,0");

    session().presetKeys().actionSetMemoryKeyWithtype(9);
    EXPECT_EQ(DeskSession::commandType(), command::kMemoryKey);
    advance(PresetKeys::kMemoryConfirmTimeout - 1ms);
    EXPECT_NE(toast(), "Setting failed");
    advance(1ms);
    EXPECT_EQ(toast(), "Setting failed");
    EXPECT_EQ(storedPresets(), "0,0,0,0");
    confirm();
    EXPECT_EQ(DeskSession::commandType(), 9);
    confirm();
    advance(PresetKeys::kMemoryKeyTap);
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);
    EXPECT_EQ(toast(), "Setting successful");
    EXPECT_EQ(storedPresets(), "80,0,0,0");
}

TEST_F(DeskSessionLogicTest, ReminderOnStartsTheCounterWithTheRecordsInterval) {
    bindDesk();
    OMBluetoothModel record = CurrentDeviceStore::load();
    record.sitOrStand = "1";
    record.isCustom = "1";
    record.remindInterval = "25";
    CurrentDeviceStore::writeCurrent(record);
    const int& starts = countPosts(notifications::kTimeManagerStart);

    openControl();
    EXPECT_EQ(counter().total(), 25);
    counter().start(); // already running: no second announcement
    advance(2s);
    EXPECT_EQ(starts, 1);
    EXPECT_EQ(counter().time(), 2);
}

// Whatever ends, replaces or starts a session, no key held before it stays held. A deleted desk
// is DeviceSwitchTest's, quitting GoToHeightTest's and the X11 tests'.
TEST_F(DeskSessionLogicTest, AKeyHeldInTheSessionEndsWithIt) {
    auto post = [](const char* name) { NotificationCenter::defaultCenter().post(name); };
    const std::pair<const char*, std::function<void()>> endings[] = {
        {"session ended", [this] { session().actionDeleteCurrentDeviceSetting(); }},
        {"another desk", [post] { post(notifications::kGlobeBlueToothIsConnect); }},
        {"screen closed", [this] { control.reset(); }},
    };
    for (const auto& [name, end] : endings) {
        openControl();
        session().holdKey(command::kUpKey);
        end();
        EXPECT_EQ(DeskSession::commandType(), command::kNoKey) << name;
    }
    handle().setCurrentCommandType(command::kUpKey);
    openControl();
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey) << "a new session";
}

} // namespace
} // namespace ostrel::test
