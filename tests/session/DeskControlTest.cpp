#include "SessionTestSupport.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "session/DeskHeightDisplay.h"
#include "session/DeskStatusLine.h"
#include "session/PresetButtonRow.h"
#include "store/DQDataCatchHelper.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMDeskPicture.h"
#include "widgets/OMHoverButton.h"
#include "widgets/OMWindowIdentifier.h"
#include "widgets/WidgetTestSupport.h"

#include <QFile>
#include <QPushButton>
#include <set>

namespace ostrel::test {
namespace {

class DeskControlTest : public SessionTest {
protected:
    // Long-presses the preset button and answers the save sheet.
    void longPressPreset(int slot, bool confirm) {
        ShortcutsHeightSetVC::setPresenter([this, confirm](ShortcutsHeightSetVC& sheet) {
            sheetTips.push_back(sheet.tip());
            sheets.insert(&sheet);
            (confirm ? sheet.confirmButton() : sheet.cancelButton())->click();
            return true;
        });
        OMHoverButton* button = control->presetButton(slot);
        press(button);
        advance(600ms); // past the long-press check
        release(button);
    }

    std::vector<QString> sheetTips;
    std::set<const ShortcutsHeightSetVC*> sheets;
};

TEST_F(DeskControlTest, HoldingUpRaisesTheDeskAndReleasingStopsItWithinOnePoll) {
    VirtualDesk& desk = bindDesk();
    openControl();
    press(control->upButton());
    advance(2s);
    EXPECT_GT(desk.heightTenths(), 780);
    release(control->upButton());
    advance(desk.config().pollPeriod + 1ms);
    EXPECT_FALSE(desk.isMoving());
    advance(200ms);
    EXPECT_EQ(control->heightText(), QString::asprintf("%.1fcm", desk.heightTenths() / 10.0));
    // Lower on screen means the picture's stages slide together less.
    EXPECT_LT(control->deskPicture()->topOffset(), DeskHeightDisplay::legsForModel("D5").fir +
                                                       DeskHeightDisplay::legsForModel("D5").sec);

    // Either release stops the desk, even with the other button pressed in between.
    press(control->downButton());
    press(control->upButton());
    EXPECT_EQ(DeskSession::commandType(), command::kUpKey);
    release(control->downButton());
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);
}

TEST_F(DeskControlTest, LongPressSavesTheHeightOnceTheDeskConfirms) {
    bindDesk();
    openControl();

    longPressPreset(1, true);
    EXPECT_EQ(sheetTips, std::vector<QString>{"the standing height"});
    advance(1s);
    EXPECT_EQ(toast(), "Setting successful");
    EXPECT_EQ(inBothStores("memoryHeight"), "0,72,0,0");
    EXPECT_EQ(control->presetButton(1)->imageName(), "control_stand_set");
    EXPECT_EQ(control->presetButton(0)->imageName(), "control_sit_unset");
    advance(2s);
    EXPECT_EQ(toast(), QString()) << "no failure after a confirmed save";

    // Cancelling sends nothing at all.
    longPressPreset(3, false);
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);
    EXPECT_EQ(sheetTips.back(), "the M2 height");
    EXPECT_EQ(sheets.size(), 1u) << "one sheet window serves every request";
}

TEST_F(DeskControlTest, PresetClicksAndLongPressesNeedAPresetAndAKnownHeight) {
    VirtualDesk& desk = bindDesk({}, "0,0,0,0");
    // No height report yet: the desk only reports once polled, and the screen is brand new.
    control = std::make_unique<DeskControlVC>();
    int presented = 0;
    ShortcutsHeightSetVC::setPresenter(
        [&presented](ShortcutsHeightSetVC&) { return ++presented > 0; });
    control->presetRow()->longHoverPress(control->presetButton(0));
    EXPECT_EQ(presented, 0);

    press(control->presetButton(0));
    advance(100ms);
    release(control->presetButton(0));
    advance(700ms);
    EXPECT_EQ(toast(), "Height presets not set");
    EXPECT_EQ(desk.keyFramesReceived(), 0) << "an unset preset sends no key at all";
}

// The end of a session asks once and shows the search screen in a window the user can see,
// however hidden or minimised the window was.
TEST_F(DeskControlTest, LostLinkAsksAndGoesBackToSearchInSight) {
    for (const bool minimised : {false, true}) {
        QWidget home;
        OMWindowIdentifier::assign(&home, OMWindowIdentifier::home());
        VirtualDesk& desk = bindDesk();
        openControl();
        if (minimised)
            home.showMinimized();
        alerts.clear();
        routed.clear();
        desk.dropLink();
        advance(100ms);
        ASSERT_EQ(alerts.size(), 1u) << "one prompt although link and connection both report";
        EXPECT_EQ(QStringList({alerts[0].message, alerts[0].informativeText}) + alerts[0].buttons,
                  QStringList({"Prompt", "The Bluetooth connection of the device is disconnected",
                               "Confirm"}));
        EXPECT_EQ(routed, QStringList{screens::kBluetoothSearch});
        EXPECT_TRUE(home.isVisible()) << minimised;
        EXPECT_FALSE(home.isMinimized());
    }
    // The ended session no longer reacts: a write without a link starts no reconnection scan.
    NotificationCenter::defaultCenter().post(notifications::kReconnect);
    advance(1s);
    EXPECT_FALSE(facade().isConnect());
    EXPECT_FALSE(central->isScanning());
}

// The desk's faults show in words under the height; the first opens the error screen, which
// later faults only bring back to the front with its first code.
TEST_F(DeskControlTest, DeskFaultsShowInWordsAndTheFirstOpensTheErrorScreen) {
    std::vector<long> made;
    DeskControlVC::setErrorScreenFactory([&made](long code) {
        made.push_back(code);
        return new QWidget;
    });
    VirtualDesk& desk = bindDesk();
    openControl();
    const auto line = [this] {
        return control->statusLine()->isHidden() ? QString() : control->statusLine()->text();
    };
    EXPECT_EQ(line(), "");

    desk.injectError(10);
    advance(200ms);
    EXPECT_EQ(line(), "Error E10: the desk reports a fault.");
    ASSERT_EQ(made, std::vector<long>{10});
    QPointer<QWidget> errorWindow = control->errorWindow();
    EXPECT_TRUE(errorWindow->isVisible());
    errorWindow->hide(); // understood

    desk.injectError(0);
    advance(200ms);
    EXPECT_EQ(line(), "");
    // Each state's words are DeskStatusTest's; here a later fault of another kind.
    desk.setChildLock(true);
    advance(200ms);
    EXPECT_TRUE(line().startsWith("Child lock (LOC)")) << line().toStdString();
    EXPECT_TRUE(errorWindow->isVisible());
    EXPECT_EQ(made.size(), 1u) << "one error window, reused";
    control.reset();
    EXPECT_FALSE(errorWindow) << "it goes with the screen";
    DeskControlVC::setErrorScreenFactory(nullptr);
}

TEST_F(DeskControlTest, NoLinkAtStartAsksAndGoesToTheBluetoothOffScreenWhenTheRadioIsOff) {
    central->setPowered(false);
    advance(100ms);
    openControl();
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(routed, QStringList{screens::kNoBluetooth});
}

TEST_F(DeskControlTest, ReconnectionScanRunsInRoundsUntilTheBoundDeskIsBackAndAFailureEndsIt) {
    VirtualDesk& desk = bindDesk({}, "70,0,0,0");
    addDesk({.name = "QWJ-0002"});
    openControl();
    alertAnswer = 0;
    desk.setInRange(false);
    advance(100ms);

    NotificationCenter::defaultCenter().post(notifications::kReconnect);
    advance(95s); // three rounds; the other desk is seen and ignored
    EXPECT_FALSE(facade().isConnect());
    EXPECT_TRUE(central->isScanning());
    EXPECT_TRUE(session().link().isReConnect());

    desk.setInRange(true);
    advance(2s);
    ASSERT_TRUE(facade().isConnect());
    EXPECT_EQ(facade().currentPeripheral()->name(), desk.name());
    EXPECT_FALSE(central->isScanning());
    // The current record comes back from the bound list, presets included, dated anew.
    EXPECT_EQ(storedPresets(), "70,0,0,0");
    EXPECT_EQ(CurrentDeviceStore::load().lastConnectionTime, "2024-01-01 09:01");

    // A reconnection that fails is over: a later link must start the reminder afresh.
    desk.dropLink();
    advance(100ms);
    central->setConnectFailure(&desk, QStringLiteral("refused"));
    NotificationCenter::defaultCenter().post(notifications::kReconnect);
    EXPECT_TRUE(session().link().isReConnect());
    advance(2s);
    EXPECT_FALSE(facade().isConnect());
    EXPECT_FALSE(session().link().isReConnect());
}

TEST_F(DeskControlTest, ResetFromTheDeskClearsThePresetsInBothStores) {
    VirtualDesk& desk = bindDesk({}, "70,110,0,95");
    openControl();
    EXPECT_EQ(control->presetButton(0)->imageName(), "control_sit_set");

    desk.setResetNeeded(true);
    advance(300ms);
    EXPECT_EQ(session().presetKeys().presets(), (CurrentDeviceStore::Presets{0, 0, 0, 0}));
    EXPECT_EQ(inBothStores("memoryHeight"), "0,0,0,0");
    for (int slot = 0; slot < DeskControlVC::kPresetCount; ++slot)
        EXPECT_TRUE(control->presetButton(slot)->imageName().endsWith("_unset"));

    // With nothing to clear, further resets write nothing.
    CurrentDeviceStore::remove();
    advance(300ms);
    EXPECT_FALSE(
        QFile::exists(DQDataCatchHelper::getDocPath() + '/' + CurrentDeviceStore::kFileName));
}

TEST_F(DeskControlTest, HoverShowsPresetTipsInTheChosenUnitAndTurnsTheGear) {
    bindDesk({}, "72,0,0,0");
    openControl();
    hover(control->presetButton(0), true);
    EXPECT_EQ(control->tipText(), "Sit height:72.0cm");
    hover(control->presetButton(0), false);
    EXPECT_EQ(control->tipText(), QString());
    setUnit("1");
    hover(control->presetButton(0), true);
    EXPECT_EQ(control->tipText(), "Sit height:28.3in");
    hover(control->presetButton(1), true);
    EXPECT_EQ(control->tipText(), QString()) << "an unset preset has no tip";

    OMHoverButton* gear = control->settingsButton();
    hover(gear, true);
    advance(320ms);
    EXPECT_EQ(std::pair(gear->imageName(), gear->rotation()),
              std::pair(QString("control_set"), -30.0));
    hover(gear, false);
    advance(320ms);
    EXPECT_EQ(std::pair(gear->imageName(), gear->rotation()),
              std::pair(QString("control_set_normal"), 0.0));
}

} // namespace
} // namespace ostrel::test
