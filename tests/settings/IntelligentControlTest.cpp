#include "SettingsTestSupport.h"
#include "protocol/CommandType.h"
#include "session/HeightSaveHelpVC.h"
#include "settings/AntiCollisionHelpVC.h"
#include "settings/AutomaticResetHelpVC.h"
#include "settings/MemoryKeySequence.h"
#include "settings/PresetBarView.h"
#include "settings/ViewIntelligentControl.h"
#include "settings/ViewSensitivity.h"
#include "store/FileManager.h"
#include "widgets/OMSwitchButton.h"

#include <QLabel>
#include <algorithm>

namespace ostrel::test {
namespace {

constexpr int kStanding = 0, kSitting = 1, kM1 = 2;
constexpr int kSitKeyBit = 0x04; // the Sit key in a key frame

class IntelligentControlTest : public SettingsTest {
protected:
    // Opened as a user finds it: the presets help's "Customize".
    ViewIntelligentControl& openPage(VirtualDeskConfig config = {},
                                     const char* presets = "0,0,0,0") {
        desk = &bindDesk(std::move(config), presets);
        openControlWithSettings();
        advance(500ms);
        control->actionShowHelp();
        auto* help = qobject_cast<HeightSaveHelpVC*>(
            OMWindowIdentifier::find(OMWindowIdentifier::setting()));
        EXPECT_NE(help, nullptr);
        help->customizeButton()->click();
        EXPECT_TRUE(help->isHidden());
        return *top<ViewIntelligentControl>();
    }

    // The key answered to the desk's polls at the start of each step of the sequence, and after.
    std::vector<int> keysOverSequence() {
        std::vector<int> keys{DeskSession::commandType()};
        for (int step = 1; step <= 4; ++step) {
            advance(MemoryKeySequence::kStep);
            keys.push_back(DeskSession::commandType());
        }
        return keys;
    }

    VirtualDesk* desk = nullptr;
};

TEST_F(IntelligentControlTest,
       StoringAPresetTapsTheDeskKeysAndRecordsTheRoundedHeightInBothStores) {
    ViewIntelligentControl& page = openPage({.startHeight = 805}, "72,110,0,0");
    EXPECT_EQ(page.presetLabel(kStanding)->text(), "110.0 cm");
    EXPECT_EQ(page.presetLabel(kSitting)->text(), "72.0 cm");
    EXPECT_EQ(page.presetLabel(kM1)->text(), "Not set");
    EXPECT_DOUBLE_EQ(page.presetBar(kSitting)->fraction(), (720.0 - 600) / 600);
    EXPECT_EQ(page.presetBar(kM1)->fraction(), 0.0);

    page.currentAltitudeButton(kM1)->click();
    EXPECT_EQ(storedPresets(), "72,110,0,0") << "not before the desk has had the keys";
    const int framesBefore = desk->keyFramesReceived();
    EXPECT_EQ(keysOverSequence(),
              (std::vector<int>{command::kMemoryKey, command::kNoKey, command::presetKey(2),
                                command::kNoKey, command::kNoKey}));
    EXPECT_GT(desk->keyFramesReceived(), framesBefore);
    EXPECT_FALSE(page.keySequence().isRunning());
    // Recorded once the desk has had every key, at the height shown at the click.
    EXPECT_EQ(inBothStores("memoryHeight"), "72,110,80,0"); // 80.5 rounds to even
    EXPECT_EQ(memoryKeyChanges, 1);
    EXPECT_EQ(page.presetLabel(kM1)->text(), "80.0 cm");
    EXPECT_EQ(session().presetKeys().memory(2), 80);
}

TEST_F(IntelligentControlTest, InchesShowTheSittingLineWithItsTwoSpaces) {
    setUnit("1");
    ViewIntelligentControl& page = openPage({}, "72,110,0,0");
    EXPECT_EQ(page.presetLabel(kSitting)->text(), QString::asprintf("%.1f  inches", 7.2 / 0.254));
    EXPECT_EQ(page.presetLabel(kStanding)->text(), QString::asprintf("%.1f inches", 11.0 / 0.254));
}

// Leaving the page does not cut the desk's keys short: the desk would store nothing while the
// record shows the new preset.
TEST_F(IntelligentControlTest, TheKeySequenceOutlivesThePage) {
    ViewIntelligentControl& page = openPage({}, "0,110,0,0");
    page.currentAltitudeButton(kSitting)->click();
    advance(300ms);
    goBack();
    const std::size_t closedAt = desk->keyFrames().size();
    EXPECT_EQ(keysOverSequence(),
              (std::vector<int>{command::kMemoryKey, command::kNoKey, command::presetKey(0),
                                command::kNoKey, command::kNoKey}));
    EXPECT_TRUE(std::any_of(desk->keyFrames().begin() + std::ptrdiff_t(closedAt),
                            desk->keyFrames().end(),
                            [](const auto& frame) { return frame.keys == kSitKeyBit; }));
    EXPECT_EQ(storedPresets(), "72,110,0,0");
}

TEST_F(IntelligentControlTest, AntiCollisionAndSensitivityAreStoredSentToTheDeskAndExplained) {
    ViewIntelligentControl& page = openPage();
    EXPECT_EQ(page.antiSwitch()->imageName(), "setting_switchclose");
    EXPECT_EQ(page.sensitivityRow()->valueText(), "Low");

    click(page.antiSwitch());
    advance(100ms);
    EXPECT_EQ(page.antiSwitch()->imageName(), "setting_switchopen");
    EXPECT_EQ(inBothStores("encounterResistanceGoBack"), "1");
    EXPECT_EQ(desk->sensitivity(), 1);

    click(page.sensitivityRow());
    auto* levels = top<ViewSensitivity>();
    ASSERT_NE(levels, nullptr);
    click(levels->levelRow(3));
    advance(100ms);
    EXPECT_EQ(levels->levelRow(3)->accessoryImage(), "setting_select");
    EXPECT_TRUE(levels->levelRow(1)->accessoryImage().isEmpty());
    EXPECT_EQ(CurrentDeviceStore::load().resistanceSensitivity, "3");
    EXPECT_EQ(desk->sensitivity(), 3);
    EXPECT_EQ(sensitivityChanges, 1);
    EXPECT_EQ(page.sensitivityRow()->valueText(), "High");
    goBack();

    // Off: the desk hears sensitivity 0, also when a level is chosen.
    click(page.antiSwitch());
    advance(100ms);
    EXPECT_EQ(CurrentDeviceStore::load().encounterResistanceGoBack, "0");
    EXPECT_EQ(desk->sensitivity(), 0);
    click(page.sensitivityRow());
    click(top<ViewSensitivity>()->levelRow(2));
    advance(100ms);
    EXPECT_EQ(desk->sensitivity(), 0);
    EXPECT_EQ(page.sensitivityRow()->valueText(), "Middle");
    goBack();

    click(page.antiHelpButton());
    ASSERT_NE(top<AntiCollisionHelpVC>(), nullptr);
    EXPECT_FALSE(top<AntiCollisionHelpVC>()->text().isEmpty());
    goBack();
    click(page.resetHelpButton());
    ASSERT_NE(top<AutomaticResetHelpVC>(), nullptr);
    goBack();
    EXPECT_EQ(control->topView(), &page);
}

// No desk: the keys and frames go nowhere, the records are still kept; a missing or unreadable
// current-device file reads as a newly bound desk's record.
TEST_F(IntelligentControlTest, WithoutADeskOrARecordThePageStillWorks) {
    alertAnswer = OMAlert::kFirstButton + 1; // the session stays on screen
    openControlWithSettings();
    FileManager::writeString(QStringLiteral("not a property list"),
                             QString::fromLatin1(CurrentDeviceStore::kFileName));
    control->pushViewControlWithView(new ViewIntelligentControl(control.get()));
    auto& page = *top<ViewIntelligentControl>();
    EXPECT_EQ(page.presetLabel(kSitting)->text(), "Not set");
    EXPECT_EQ(page.sensitivityRow()->valueText(), "Low");
    EXPECT_EQ(page.antiSwitch()->imageName(), "setting_switchclose");

    page.currentAltitudeButton(kSitting)->click(); // no height known: keys only
    EXPECT_EQ(DeskSession::commandType(), command::kMemoryKey);
    click(page.antiSwitch());
    advance(3s);
    EXPECT_EQ(CurrentDeviceStore::load().encounterResistanceGoBack, "1");
    EXPECT_EQ(CurrentDeviceStore::load().memoryHeight, "0,0,0,0");
    EXPECT_TRUE(OMPlistManager::getBindDevice().isEmpty());
    EXPECT_EQ(memoryKeyChanges, 0);
}

} // namespace
} // namespace ostrel::test
