#include "FakeGlobalKeys.h"
#include "SettingsTestSupport.h"
#include "platform/NoGlobalKeys.h"
#include "settings/ShortcutComboRowView.h"
#include "settings/ShortcutItemRowView.h"
#include "settings/ShortcutSwitchRowView.h"
#include "settings/ViewShortcutKeys.h"
#include "widgets/OMSwitchButton.h"

namespace ostrel::test {
namespace {

class ShortcutKeysTest : public SettingsTest {
protected:
    ViewShortcutKeys& openPage() {
        openControlWithSettings();
        page = new ViewShortcutKeys(control.get()); // the screen owns its pages
        return *page;
    }

    static Object_SystemSetting stored() { return SystemSettingRecord::load(); }

    QStringList itemContents() const {
        QStringList contents;
        for (const ShortcutItemRowView* row : page->itemRows())
            contents << row->content();
        return contents;
    }

    FakeGlobalKeysInstalled fake;
    ViewShortcutKeys* page = nullptr;
};

TEST_F(ShortcutKeysTest, TheSwitchStoresItsStateAndTakesOrLetsGoTheKeys) {
    ViewShortcutKeys& view = openPage();
    EXPECT_FALSE(view.switchRow()->switchButton()->isChecked()) << "off in a fresh record";
    EXPECT_TRUE(fake.keys->calls.isEmpty());

    click(view.switchRow()->switchButton());
    EXPECT_EQ(stored().combinationopen, "1");
    EXPECT_TRUE(view.switchRow()->switchButton()->isChecked());
    EXPECT_EQ(fake.keys->calls, QStringList({"grab 0"}));

    click(view.switchRow()->switchButton());
    EXPECT_EQ(stored().combinationopen, "0");
    EXPECT_FALSE(fake.keys->held);
    EXPECT_EQ(stored().unit, "0") << "the other settings stay";
}

TEST_F(ShortcutKeysTest, ACombinationRetakesTheKeysAndRelabelsTheRows) {
    Object_SystemSetting setting = stored();
    setting.combinationopen = "1";
    SystemSettingRecord::save(setting);
    alertAnswer = 0; // no desk: the session waits at its prompt and keeps the keys
    ViewShortcutKeys& view = openPage();
    EXPECT_EQ(itemContents(), QStringList({"Shift + ↑", "Shift + ↓", "Shift + 1", "Shift + 2",
                                           "Shift + 3", "Shift + 4"}));
    fake.keys->calls.clear();

    click(view.comboRow()->button(2));
    EXPECT_EQ(stored().combinationkey, "2");
    EXPECT_EQ(fake.keys->calls, QStringList({"release", "grab 1"}));
    EXPECT_EQ(itemContents().first(), "Ctrl + Cmd + ↑");
    EXPECT_TRUE(view.comboRow()->button(2)->isChecked());
    EXPECT_FALSE(view.comboRow()->button(0)->isChecked());

    click(view.comboRow()->button(1));
    EXPECT_EQ(fake.keys->calls.last(), "grab 2");
    EXPECT_EQ(itemContents().last(), "Alt + Cmd + 4");
}

// The page holds the record it loaded: saving again would overwrite what changed meanwhile.
TEST_F(ShortcutKeysTest, ChoosingTheChosenCombinationAgainChangesAndSavesNothing) {
    ViewShortcutKeys& view = openPage();
    Object_SystemSetting elsewhere = stored();
    elsewhere.autocatchclean = "1";
    SystemSettingRecord::save(elsewhere);

    click(view.comboRow()->button(0));
    EXPECT_EQ(stored().autocatchclean, "1");
    EXPECT_TRUE(fake.keys->calls.isEmpty());
    EXPECT_TRUE(view.comboRow()->button(0)->isChecked()) << "still highlighted";
}

TEST_F(ShortcutKeysTest, ThePageSaysWhenKeysCannotBeHad) {
    fake.keys->takenByOthers = {126, 19};
    ViewShortcutKeys& view = openPage();
    EXPECT_EQ(view.notice(), QString());
    click(view.switchRow()->switchButton());
    EXPECT_EQ(view.notice(),
              "Another application already uses Shift + ↑, Shift + 2: these keys do nothing here.");
    click(view.switchRow()->switchButton());
    EXPECT_EQ(view.notice(), QString());

    NoGlobalKeys none;
    PlatformOverride<GlobalKeyBackend> noKeys(none);
    ViewShortcutKeys unavailable(control.get());
    EXPECT_EQ(unavailable.notice(), "Global shortcuts are not available on this desktop.");
}

} // namespace
} // namespace ostrel::test
