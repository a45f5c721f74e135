#include "SessionTestSupport.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "protocol/BluetoothProtocol.h"
#include "session/DeskHeightDisplay.h"
#include "session/DeskStatusLine.h"
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

QString shown(int tenths) {
    return QString::asprintf("%.1fcm", tenths / 10.0);
}

class DeskControlTest : public SessionTest {
protected:
    // Long-presses the preset button and answers the save sheet.
    void longPressPreset(int slot, bool confirm) {
        ShortcutsHeightSetVC::setPresenter([this, confirm](ShortcutsHeightSetVC& sheet) {
            sheetTips.push_back(sheet.tip());
            sheets.insert(&sheet);
            answeredAt = now();
            (confirm ? sheet.confirmButton() : sheet.cancelButton())->click();
            return true;
        });
        OMHoverButton* button = control->presetButton(slot);
        press(button);
        advance(600ms); // past the long-press check
        release(button);
    }

    std::vector<QString> sheetTips;
    std::chrono::milliseconds answeredAt{};
    std::set<const ShortcutsHeightSetVC*> sheets;
};

TEST_F(DeskControlTest, HoldingUpRaisesTheDeskAndReleasingStopsItWithinOnePoll) {
    VirtualDesk& desk = bindDesk();
    openControl();
    EXPECT_EQ(control->heightText(), "72.0cm");

    press(control->upButton());
    EXPECT_EQ(DeskSession::commandType(), command::kUpKey);
    advance(2s);
    ASSERT_TRUE(desk.isMoving());
    EXPECT_GT(desk.heightTenths(), 780);
    release(control->upButton());
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);
    advance(desk.config().pollPeriod + 1ms);
    EXPECT_FALSE(desk.isMoving());

    const int stoppedAt = desk.heightTenths();
    advance(1s);
    EXPECT_EQ(desk.heightTenths(), stoppedAt);
    EXPECT_EQ(control->heightText(), shown(stoppedAt));
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
    EXPECT_EQ(storedPresets(), "0,72,0,0");
    EXPECT_EQ(boundPresets(), "0,72,0,0");
    EXPECT_EQ(control->presetButton(1)->imageName(), "control_stand_set");
    EXPECT_EQ(control->presetButton(0)->imageName(), "control_sit_unset");
    advance(2s);
    EXPECT_EQ(toast(), QString()) << "no failure after a confirmed save";
}

TEST_F(DeskControlTest, UnconfirmedSaveReportsFailureAfterTwoSecondsAndStoresNothing) {
    VirtualDesk& desk = bindDesk({}, "65,0,0,0");
    openControl();
    desk.setChildLock(true); // the desk ignores the memory key and never shows "S-"
    advance(200ms);

    longPressPreset(2, true);
    advance(PresetKeys::kMemoryConfirmTimeout - 1ms - (now() - answeredAt));
    EXPECT_NE(toast(), "Setting failed");
    advance(1ms);
    EXPECT_EQ(toast(), "Setting failed");
    EXPECT_EQ(storedPresets(), "65,0,0,0");
    EXPECT_EQ(boundPresets(), "65,0,0,0");

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
    control->longHoverPress(control->presetButton(0));
    EXPECT_EQ(presented, 0);

    press(control->presetButton(0));
    advance(100ms);
    release(control->presetButton(0));
    advance(700ms);
    EXPECT_EQ(toast(), "Height presets not set");
    EXPECT_EQ(desk.keyFramesReceived(), 0) << "an unset preset sends no key at all";
}

TEST_F(DeskControlTest, LostLinkAsksAndGoesBackToSearch) {
    VirtualDesk& desk = bindDesk();
    openControl();
    desk.dropLink();
    advance(100ms);

    ASSERT_EQ(alerts.size(), 1u) << "one prompt although link and connection both report";
    EXPECT_EQ(alerts[0].message, "Prompt");
    EXPECT_EQ(alerts[0].informativeText, "The Bluetooth connection of the device is disconnected");
    EXPECT_EQ(alerts[0].buttons, QStringList{"Confirm"});
    EXPECT_EQ(routed, QStringList{screens::kBluetoothSearch});
    EXPECT_FALSE(facade().isConnect());

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
    const struct {
        void (VirtualDesk::*raise)(bool);
        const char* words;
    } faults[] = {
        {&VirtualDesk::setChildLock, "Child lock (LOC)"},
        {&VirtualDesk::setResetNeeded, "Reset needed (RST): hold Down until the desk reaches"},
        {&VirtualDesk::setSlideDown, "Slide-down warning (-0L)"},
    };
    for (const auto& fault : faults) {
        (desk.*fault.raise)(true);
        advance(200ms);
        EXPECT_TRUE(line().startsWith(fault.words)) << line().toStdString();
        EXPECT_TRUE(errorWindow->isVisible()) << fault.words;
        errorWindow->hide();
        (desk.*fault.raise)(false);
        advance(200ms);
    }
    EXPECT_EQ(made.size(), 1u) << "one error window, reused";
    control.reset();
    EXPECT_FALSE(errorWindow) << "it goes with the screen";
    DeskControlVC::setErrorScreenFactory(nullptr);
}

// The end of a session shows the search screen in a window the user can see, however hidden
// or minimised the window was.
TEST_F(DeskControlTest, SessionEndBringsTheHomeWindowToTheFront) {
    for (const bool minimised : {false, true}) {
        QWidget home;
        OMWindowIdentifier::assign(&home, OMWindowIdentifier::home());
        VirtualDesk& desk = bindDesk();
        openControl();
        if (minimised)
            home.showMinimized();
        desk.dropLink();
        advance(100ms);
        ASSERT_EQ(routed.size(), minimised ? 2 : 1);
        EXPECT_TRUE(home.isVisible()) << minimised;
        EXPECT_FALSE(home.isMinimized());
    }
}

TEST_F(DeskControlTest, NoLinkAtStartAsksAndGoesToTheBluetoothOffScreenWhenTheRadioIsOff) {
    central->setPowered(false);
    advance(100ms);
    openControl();
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(routed, QStringList{screens::kNoBluetooth});
}

// A new link never inherits a held key.
TEST_F(DeskControlTest, KeyHeldWhenTheLinkDropsDoesNotMoveTheDeskAfterReconnecting) {
    VirtualDesk& desk = bindDesk();
    openControl();
    alertAnswer = 0; // the prompt stays unanswered while the session reconnects

    press(control->upButton()); // and the button is never released
    advance(500ms);
    ASSERT_TRUE(desk.isMoving());
    desk.dropLink();
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);

    NotificationCenter::defaultCenter().post(notifications::kReconnect);
    press(control->downButton()); // while the session looks for the desk again
    advance(2s);
    ASSERT_TRUE(facade().isConnect());
    ASSERT_TRUE(desk.isSubscribed());
    const int height = desk.heightTenths();
    advance(2s);
    EXPECT_FALSE(desk.isMoving());
    EXPECT_EQ(desk.heightTenths(), height);
    EXPECT_EQ(control->heightText(), shown(height));
}

TEST_F(DeskControlTest, ReconnectionScanRunsInRoundsUntilTheBoundDeskIsBack) {
    VirtualDesk& desk = bindDesk({}, "70,0,0,0");
    VirtualDeskConfig other;
    other.name = "QWJ-0002";
    addDesk(other);
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
}

// A reconnection that fails is over: a later link must start the reminder afresh.
TEST_F(DeskControlTest, AFailedReconnectionIsNoLongerAReconnection) {
    VirtualDesk& desk = bindDesk();
    openControl();
    alertAnswer = 0;
    desk.dropLink();
    advance(100ms);
    central->setConnectFailure(&desk, QStringLiteral("refused"));

    NotificationCenter::defaultCenter().post(notifications::kReconnect);
    EXPECT_TRUE(session().link().isReConnect());
    advance(2s);
    EXPECT_FALSE(facade().isConnect());
    EXPECT_FALSE(session().link().isReConnect());
}

TEST_F(DeskControlTest, HeightsShowInTheChosenUnitWithInchReportsConverted) {
    VirtualDeskConfig inchDesk;
    inchDesk.inchDisplay = true; // shows 28.3in for 72.0 cm, reported as 283
    bindDesk(inchDesk);
    openControl();
    EXPECT_EQ(control->heightText(), "71.9cm"); // 283 x 2.54 = 718.8 tenths of a cm

    setUnit("1");
    NotificationCenter::defaultCenter().post(notifications::kUnitChange);
    EXPECT_EQ(control->heightText(), "28.3in");
}

TEST_F(DeskControlTest, ResetFromTheDeskClearsThePresetsInBothStores) {
    VirtualDesk& desk = bindDesk({}, "70,110,0,95");
    openControl();
    EXPECT_EQ(control->presetButton(0)->imageName(), "control_sit_set");

    desk.setResetNeeded(true);
    advance(300ms);
    EXPECT_EQ(session().presetKeys().presets(), (CurrentDeviceStore::Presets{0, 0, 0, 0}));
    EXPECT_EQ(storedPresets(), "0,0,0,0");
    EXPECT_EQ(boundPresets(), "0,0,0,0");
    for (int slot = 0; slot < DeskControlVC::kPresetCount; ++slot)
        EXPECT_TRUE(control->presetButton(slot)->imageName().endsWith("_unset"));

    // With nothing to clear, further resets write nothing.
    CurrentDeviceStore::remove();
    advance(300ms);
    EXPECT_FALSE(
        QFile::exists(DQDataCatchHelper::getDocPath() + '/' + CurrentDeviceStore::kFileName));
}

TEST_F(DeskControlTest, LightStripButtonAppearsOnTheFirstReportAndOnlyChangesAreAnnounced) {
    bindDesk();
    std::vector<QVariantMap> announced;
    QObject observer;
    NotificationCenter::defaultCenter().addObserver(
        &observer, notifications::kLightColorStatusChange,
        [&announced](const QVariant& object) { announced.push_back(object.toMap()); });
    control = std::make_unique<DeskControlVC>();
    control->show();
    EXPECT_FALSE(control->lightStripButton()->isVisible());
    advance(300ms); // the desk reports its strip (off) with its device information
    EXPECT_TRUE(control->lightStripButton()->isVisible());
    EXPECT_TRUE(announced.empty());

    auto setLight = [](int open, int red) {
        constexpr int customColour = 9;
        facade().writeDataWithCurrentperipheral(
            *BluetoothProtocol::cmdForLightStripColorWithSwitchStatus(open, customColour, red, 0,
                                                                      0),
            nullptr);
    };

    setLight(1, 20);
    advance(300ms);
    setLight(1, 30);
    advance(300ms);
    ASSERT_EQ(announced.size(), 1u);
    EXPECT_EQ(announced[0].value("open").toInt(), 1);
    EXPECT_EQ(session().objectLightColor()->red, 30);
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
    EXPECT_EQ(gear->imageName(), "control_set");
    EXPECT_DOUBLE_EQ(gear->rotation(), -30.0);
    hover(gear, false);
    advance(320ms);
    EXPECT_DOUBLE_EQ(gear->rotation(), 0.0);
    EXPECT_EQ(gear->imageName(), "control_set_normal");
}

} // namespace
} // namespace ostrel::test
