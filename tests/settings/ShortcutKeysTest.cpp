#include "FakeGlobalKeys.h"
#include "SettingsTestSupport.h"
#include "platform/NoGlobalKeys.h"
#include "settings/ShortcutComboRowView.h"
#include "settings/ShortcutCommandsView.h"
#include "settings/ShortcutItemRowView.h"
#include "settings/ShortcutSwitchRowView.h"
#include "settings/ViewShortcutKeys.h"
#include "widgets/OMAlert.h"
#include "widgets/OMSwitchButton.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPushButton>
#include <QTranslator>

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

// Whatever the desktop could not give is named on the page while the keys are on.
TEST_F(ShortcutKeysTest, TheSwitchStoresItsStateTakesOrLetsGoTheKeysAndSaysWhichAreTaken) {
    fake.keys->takenByOthers = {126, 19};
    ViewShortcutKeys& view = openPage();
    EXPECT_FALSE(view.switchRow()->switchButton()->isChecked()) << "off in a fresh record";
    EXPECT_TRUE(fake.keys->calls.isEmpty());
    EXPECT_EQ(view.notice(), QString());

    alertAnswer = OMAlert::kFirstButton + 1; // Shift, the default, as it is
    click(view.switchRow()->switchButton());
    EXPECT_EQ(stored().combinationopen, "1");
    EXPECT_TRUE(view.switchRow()->switchButton()->isChecked());
    EXPECT_EQ(fake.keys->calls, QStringList({"grab 0"}));
    EXPECT_EQ(view.notice(),
              "Another application already uses Shift + ↑, Shift + 2: these keys do nothing here.");

    click(view.switchRow()->switchButton());
    EXPECT_EQ(stored().combinationopen, "0");
    EXPECT_FALSE(fake.keys->held);
    EXPECT_EQ(stored().unit, "0") << "the other settings stay";
    EXPECT_EQ(view.notice(), QString());
}

TEST_F(ShortcutKeysTest, ACombinationRetakesTheKeysAndRelabelsTheRows) {
    SystemSettingRecord::change(&Object_SystemSetting::combinationopen, "1");
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
    SystemSettingRecord::change(&Object_SystemSetting::autocatchclean, "1"); // saved elsewhere

    click(view.comboRow()->button(0));
    EXPECT_EQ(stored().autocatchclean, "1");
    EXPECT_TRUE(fake.keys->calls.isEmpty());
    EXPECT_TRUE(view.comboRow()->button(0)->isChecked()) << "still highlighted";
}

// Shift with the arrows and digits selects text everywhere else: taking it is confirmed, with
// Ctrl + Super offered instead.
struct ShiftCase {
    const char* name;
    const char* storedOpen;
    const char* storedKey;
    bool flipSwitch; // else choose Shift in the combination row
    int answer;      // 0: no question is asked
    const char* open;
    const char* key;
    QStringList calls;
};

class ShiftConfirmationTest : public ShortcutKeysTest,
                              public ::testing::WithParamInterface<ShiftCase> {};

TEST_P(ShiftConfirmationTest, NamesTheConflictAndDoesWhatTheAnswerSays) {
    const ShiftCase& c = GetParam();
    SystemSettingRecord::change(&Object_SystemSetting::combinationopen, c.storedOpen);
    SystemSettingRecord::change(&Object_SystemSetting::combinationkey, c.storedKey);
    alertAnswer = c.answer;
    ViewShortcutKeys& view = openPage();
    fake.keys->calls.clear();
    alerts.clear();

    click(c.flipSwitch ? static_cast<QWidget*>(view.switchRow()->switchButton())
                       : view.comboRow()->button(0));
    ASSERT_EQ(alerts.size(), c.answer ? 1u : 0u);
    if (c.answer) {
        EXPECT_TRUE(alerts[0].informativeText.contains("Shift + arrows"));
        EXPECT_EQ(alerts[0].buttons,
                  QStringList({"Use Ctrl + Super", "Use Shift anyway", "Cancel"}));
    }
    EXPECT_EQ(stored().combinationopen, c.open);
    EXPECT_EQ(stored().combinationkey.value_or(""), c.key);
    EXPECT_EQ(fake.keys->calls, c.calls);
    EXPECT_EQ(view.switchRow()->switchButton()->isChecked(), std::string(c.open) == "1");
    const int shown = std::string(c.key) == "2" ? 2 : std::string(c.key) == "1" ? 1 : 0;
    EXPECT_TRUE(view.comboRow()->button(shown)->isChecked());
}

constexpr int kCtrlSuper = OMAlert::kFirstButton;
constexpr int kKeepShift = OMAlert::kFirstButton + 1;
constexpr int kCancel = OMAlert::kFirstButton + 2;

INSTANTIATE_TEST_SUITE_P(
    Answers, ShiftConfirmationTest,
    ::testing::Values(
        ShiftCase{"SwitchOnTakesCtrlSuper", "0", "0", true, kCtrlSuper, "1", "2", {"grab 1"}},
        ShiftCase{"SwitchOnKeepsShift", "0", "0", true, kKeepShift, "1", "0", {"grab 0"}},
        ShiftCase{"SwitchOnCancelled", "0", "0", true, kCancel, "0", "0", {}},
        ShiftCase{"ChoosingShiftCancelled", "1", "1", false, kCancel, "1", "1", {}},
        ShiftCase{
            "ChoosingShiftConfirmed", "1", "1", false, kKeepShift, "1", "0", {"release", "grab 0"}},
        ShiftCase{"ChoosingShiftWhileOffAsksNothing", "0", "1", false, 0, "0", "0", {}}),
    [](const auto& tested) { return std::string(tested.param.name); });

// Where no application may take keys, the page lists a command per action to bind in the
// desktop's own settings, each with a button that copies it.
TEST_F(ShortcutKeysTest, WithoutGlobalKeysThePageOffersTheCommands) {
    ViewShortcutKeys& available = openPage();
    EXPECT_TRUE(available.commandsView()->isHidden());

    NoGlobalKeys none;
    PlatformOverride<GlobalKeyBackend> noKeys(none);
    ViewShortcutKeys view(control.get());
    EXPECT_EQ(view.notice(), "Global shortcuts are not available on this desktop.");
    EXPECT_FALSE(view.commandsView()->isHidden());
    QStringList lines;
    for (const ShortcutCommandsView::Command& command : view.commandsView()->commands())
        lines << command.title + u':' + command.line.section(u' ', 1);
    EXPECT_EQ(lines, QStringList({"Up:--up", "Down:--down", "Sitting:--preset sit",
                                  "Standing:--preset stand", "M1:--preset m1", "M2:--preset m2",
                                  "Stop:--stop", "Move to 110 cm:--move-to 110"}));
    click(view.commandsView()->copyButton(3));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), view.commandsView()->commands()[3].line);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("ostrel-motion "));
}

// "Cmd" is the Super key on Linux, and says so in both languages.
TEST_F(ShortcutKeysTest, CmdReadsAsSuperInBothLanguages) {
    for (const char* language : {"en", "zh_CN"}) {
        QTranslator translator;
        ASSERT_TRUE(translator.load(QStringLiteral(":/i18n/settings_%1.qm").arg(language)));
        QCoreApplication::installTranslator(&translator);
        EXPECT_EQ(ViewShortcutKeys::prefix("1"), "Alt + Super +") << language;
        EXPECT_EQ(ViewShortcutKeys::prefix("2"), "Ctrl + Super +") << language;
        ShortcutComboRowView row;
        EXPECT_EQ(row.button(2)->text(), "Ctrl + Super") << language;
        QCoreApplication::removeTranslator(&translator);
    }
}

} // namespace
} // namespace ostrel::test
