#include "SettingsTestSupport.h"
#include "settings/ComingSoonPage.h"
#include "settings/ViewSetting.h"
#include "settings/ViewSystemSetting.h"

namespace ostrel::test {
namespace {

using NavigationTest = SettingsTest;

TEST_F(NavigationTest, TheGearOpensTheMenuWhoseRowsOpenTheirPagesEachWithAWayBack) {
    bindDesk();
    openControlWithSettings();
    clickGear();
    ViewSetting* menu = top<ViewSetting>();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->title(), "My Standing Desk");

    const std::pair<int, QString> placeholders[] = {{0, "Sit-stand alternation"}, {1, "Device"}};
    for (const auto& [row, title] : placeholders) {
        click(menu->row(row));
        auto* page = top<ComingSoonPage>();
        ASSERT_NE(page, nullptr) << row;
        EXPECT_EQ(page->title(), title);
        goBack();
        EXPECT_EQ(control->topView(), menu);
        EXPECT_FALSE(menu->row(row)->isDown() || menu->row(row)->isChecked());
    }

    click(menu->row(2));
    auto* system = top<ViewSystemSetting>();
    ASSERT_NE(system, nullptr);
    click(system->shortcutRow());
    ASSERT_NE(top<ComingSoonPage>(), nullptr);
    EXPECT_EQ(top<ComingSoonPage>()->title(), "Shortcut keys");
    goBack();
    goBack();
    goBack();
    EXPECT_EQ(control->pageCount(), 0);
    EXPECT_TRUE(control->settingsButton()->isVisible());
}

TEST_F(NavigationTest, TheMenuPicturesTheChosenDeskModel) {
    EXPECT_EQ(ViewSetting::deskImageName(QStringLiteral("D5Pro")), "connect_desk_D5Pro");
    for (const char* other : {"D5", "", "d5plus", "D7"})
        EXPECT_EQ(ViewSetting::deskImageName(QString::fromLatin1(other)), "connect_desk_D5");
}

} // namespace
} // namespace ostrel::test
