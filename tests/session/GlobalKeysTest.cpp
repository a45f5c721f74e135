#include "FakeGlobalKeys.h"
#include "SessionTestSupport.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "session/HotKeyMovement.h"
#include "session/PresetKeys.h"

#include <QDialog>

namespace ostrel::test {
namespace {

class GlobalKeysTest : public SessionTest {
protected:
    static void storeShortcuts(const char* open, const char* combination) {
        Object_SystemSetting setting;
        setting.unit = "0";
        setting.combinationopen = open;
        setting.combinationkey = combination;
        DQDataSessionHelper::userSaveSystemSetting(toPropertyForm(setting));
    }

    // A linked desk and its control screen with the shortcuts on.
    VirtualDesk& linkedControl(const char* presets = "0,0,0,0") {
        storeShortcuts("1", "0");
        VirtualDesk& desk = bindDesk({}, presets);
        openControl();
        return desk;
    }

    void press(int id) {
        fake.keys->press(id);
        scheduler.runDue();
    }

    static DQGlobalKeyHelper& helper() { return DQGlobalKeyHelper::shareInstance(); }
    HotKeyMovement& movement() { return session().hotKeyMovement(); }

    FakeGlobalKeysInstalled fake;
};

constexpr int kUp = 126, kDown = 125, kOne = 18, kTwo = 19, kThree = 20, kFour = 21;

// Each stored combination's grab, and the release before it, are the shortcut page's tests;
// here what a record no version wrote falls back to.
TEST_F(GlobalKeysTest, AnUnknownCombinationFallsBackToShiftAndEachKeyIsNamed) {
    storeShortcuts("1", "7");
    helper().actionAddGlobalKey();
    EXPECT_EQ(fake.keys->calls,
              QStringList{QStringLiteral("grab %1").arg(GlobalKeyBackend::kShift)});

    QObject observer;
    QStringList posted;
    NotificationCenter::defaultCenter().addObserver(
        &observer, QString::fromLatin1(notifications::kGlobalKeyPushName),
        [&posted](const QVariant& name) { posted << name.toString(); });
    for (int id : {kUp, kDown, kOne, kTwo, kThree, kFour, 17, 127})
        fake.keys->press(id);
    EXPECT_EQ(posted, QStringList({"GlobalKeyUp", "GlobalKeyDown", "GlobalKeyOne", "GlobalKeyTwo",
                                   "GlobalKeyThree", "GlobalKeyFour"}));
}

TEST_F(GlobalKeysTest, DigitsTapSetPresetsAndIgnoreUnsetOnesSilently) {
    linkedControl("72,0,110,0");
    press(kOne); // a timed tap of the preset key
    EXPECT_EQ(DeskSession::commandType(), command::kSitKey);
    advance(PresetKeys::kPresetKeyTap - 1ms);
    EXPECT_EQ(DeskSession::commandType(), command::kSitKey);
    advance(1ms);
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);

    for (int unset : {kTwo, kFour}) {
        press(unset);
        EXPECT_EQ(DeskSession::commandType(), command::kNoKey) << unset;
    }
    EXPECT_EQ(toast(), QString()) << "no message for a user in another application";
    press(kThree);
    EXPECT_EQ(DeskSession::commandType(), command::kM1Key);
    EXPECT_FALSE(movement().isMoving());
}

TEST_F(GlobalKeysTest, KeysDoNothingWithoutALinkedDesk) {
    storeShortcuts("1", "0");
    storeRecord("72,72,72,72");
    alertAnswer = 0; // the no-link prompt stays open
    openControl();
    for (int id : {kUp, kDown, kOne})
        press(id);
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);
    EXPECT_FALSE(movement().isMoving());
}

TEST_F(GlobalKeysTest, KeysAreLetGoAtSessionEndAndASheetStopsTheMovement) {
    linkedControl();
    ASSERT_TRUE(fake.keys->held) << "the session takes the keys at start";
    press(kDown);
    QDialog sheet(control->window());
    sheet.setWindowModality(Qt::WindowModal);
    sheet.show();
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey) << "a sheet opened over the screen";
    EXPECT_FALSE(movement().isMoving());
    sheet.hide();

    session().actionDeleteCurrentDeviceSetting();
    advance(100ms); // the link goes once the desk has heard no key
    EXPECT_FALSE(fake.keys->held);
    EXPECT_FALSE(helper().isRegistered());
}

// Reports drive the watchdog; the session has no desk and every report is the test's own.
class HotKeyWatchdogTest : public GlobalKeysTest {
protected:
    void SetUp() override {
        GlobalKeysTest::SetUp();
        alertAnswer = 0;
        openControl();
        movement().restartWatch();
        movement().toggle(command::kUpKey);
    }
};

// The same height throughout: no step 0.6 s in, although it matches the one before; the first
// step at 1.1 s remembers it; none 0.9 s after that; 1.2 s after, the desk stands.
TEST_F(HotKeyWatchdogTest, StepsAtMostOnceASecondAndStopsWhenTheHeightStands) {
    report(700);
    for (const auto& [wait, moving] :
         {std::pair(600ms, true), {500ms, true}, {900ms, true}, {300ms, false}}) {
        advance(wait);
        report(700);
        EXPECT_EQ(movement().isMoving(), moving) << wait.count();
    }
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);
}

TEST_F(HotKeyWatchdogTest, SilenceOfTwoSecondsStopsButReportsKeepItGoing) {
    for (int i = 1; i <= 10; ++i) { // five seconds of a desk on its way up
        advance(500ms);
        report(700 + 10 * i);
    }
    EXPECT_TRUE(movement().isMoving());
    advance(1999ms); // two seconds without a report
    EXPECT_EQ(DeskSession::commandType(), command::kUpKey);
    advance(1ms);
    EXPECT_FALSE(movement().isMoving());
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);
}

} // namespace
} // namespace ostrel::test
