#include "FakeGlobalKeys.h"
#include "SettingsTestSupport.h"
#include "settings/ShortcutSwitchRowView.h"
#include "settings/ViewSetting.h"
#include "settings/ViewShortcutKeys.h"
#include "settings/ViewSystemSetting.h"
#include "settings/ViewUnit.h"
#include "widgets/OMSwitchButton.h"

#include <QCheckBox>

namespace ostrel::test {
namespace {

class SystemSettingsTest : public SettingsTest {
protected:
    ViewSystemSetting& openSystemSettings() {
        bindDesk();
        openControlWithSettings();
        advance(500ms); // the first height report
        clickGear();
        click(top<ViewSetting>()->row(2));
        return *top<ViewSystemSetting>();
    }

    ViewUnit& openUnitPage(ViewSystemSetting& page) {
        click(page.unitRow());
        return *top<ViewUnit>();
    }

    static Object_SystemSetting stored() { return SystemSettingRecord::load(); }
};

TEST_F(SystemSettingsTest, AFreshInstallationShowsInchesAndNoAutomaticCleaning) {
    DQDataSessionHelper::userClearSystemSettingData();
    ViewSystemSetting& page = openSystemSettings();
    EXPECT_EQ(page.unitRow()->valueText(), "Inches");
    EXPECT_EQ(page.languageRow()->valueText(), "English");
    EXPECT_FALSE(page.autoCleanBox()->isChecked());
}

TEST_F(SystemSettingsTest, OnlyConfirmKeepsAUnitAndTellsTheControlScreenAndTheSettingsPage) {
    ViewSystemSetting& page = openSystemSettings();
    const QString heightCm = control->heightText();
    ASSERT_TRUE(heightCm.endsWith("cm"));
    EXPECT_EQ(page.unitRow()->valueText(), "Centimeters");

    ViewUnit* unit = &openUnitPage(page);
    EXPECT_EQ(unit->centimetersRow()->accessoryImage(), "setting_select");
    click(unit->inchesRow());
    EXPECT_EQ(unit->inchesRow()->accessoryImage(), "setting_select");
    EXPECT_TRUE(unit->centimetersRow()->accessoryImage().isEmpty());
    goBack();
    EXPECT_EQ(stored().unit, "0");
    EXPECT_EQ(unitChanges + memoryKeyChanges + sensitivityChanges, 0);

    unit = &openUnitPage(page);
    EXPECT_EQ(unit->centimetersRow()->accessoryImage(), "setting_select");
    click(unit->inchesRow());
    unit->confirmButton()->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(stored().unit, "1");
    EXPECT_EQ(unitChanges, 1);
    EXPECT_EQ(control->topView(), &page);
    EXPECT_EQ(page.unitRow()->valueText(), "Inches");
    EXPECT_TRUE(control->heightText().endsWith("in"));
}

TEST_F(SystemSettingsTest, TheBoxesStoreTheirFlagsAndKeepTheOtherSettings) {
    ViewSystemSetting& page = openSystemSettings();
    const std::pair<QCheckBox*, Object_SystemSetting::Text Object_SystemSetting::*> boxes[] = {
        {page.autoCleanBox(), &Object_SystemSetting::autocatchclean},
        {page.rememberDeskBox(), &Object_SystemSetting::rememberdesk},
    };
    for (const auto& [box, flag] : boxes) {
        EXPECT_FALSE(box->isChecked()) << "on by default";
        click(box);
        EXPECT_EQ(stored().*flag, "1");
        EXPECT_EQ(stored().unit, "0");
        click(box);
        EXPECT_EQ(stored().*flag, "0");
    }
}

// A page opened on top of another changes the same stored record: going back and changing
// something else keeps what the upper page stored.
TEST_F(SystemSettingsTest, AChangeBelowKeepsWhatAPageOpenedOnTopStored) {
    FakeGlobalKeysInstalled keys;
    SettingsPages::instance().registerPage(
        SettingsPages::Page::Shortcuts, [](DeskControlVC* f) { return new ViewShortcutKeys(f); });
    ViewSystemSetting& page = openSystemSettings();
    click(page.shortcutRow());
    click(top<ViewShortcutKeys>()->switchRow()->switchButton());
    goBack();
    click(page.autoCleanBox());
    click(page.unitRow());
    click(top<ViewUnit>()->inchesRow());
    top<ViewUnit>()->confirmButton()->click();

    EXPECT_EQ(stored().combinationopen, "1");
    EXPECT_EQ(stored().autocatchclean, "1");
    EXPECT_EQ(stored().unit, "1");
}

// The reset stores the defaults and drops the hot keys, but tells no screen about the unit.
TEST_F(SystemSettingsTest, RestoringDefaultsLeavesTheControlScreensUnitAlone) {
    int hotKeysRemoved = 0;
    ViewSystemSetting::setHotKeyRemover([&hotKeysRemoved] { ++hotKeysRemoved; });
    ViewSystemSetting& page = openSystemSettings();
    click(page.autoCleanBox());
    const QString heightCm = control->heightText();

    page.resetButton()->click();
    ViewSystemSetting::setHotKeyRemover(nullptr);
    EXPECT_EQ(stored(), Object_SystemSetting{});
    EXPECT_EQ(stored().unit, "1");
    EXPECT_EQ(hotKeysRemoved, 1);
    EXPECT_EQ(page.unitRow()->valueText(), "Inches");
    EXPECT_FALSE(page.autoCleanBox()->isChecked());
    EXPECT_EQ(unitChanges + memoryKeyChanges + sensitivityChanges, 0);
    EXPECT_EQ(control->heightText(), heightCm);
}

} // namespace
} // namespace ostrel::test
