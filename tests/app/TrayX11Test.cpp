// The tray icon with real clicks: a panel's tray (a small XEmbed host) docks the icon on the
// X server, xdotool clicks it, and the virtual desk says whether the menu's moves reach it.
#include "X11AppTest.h"
#include "XEmbedTrayHost.h"
#include "app/StatusMenu.h"
#include "app/TrayDeskMenu.h"

#include <QMenu>
#include <QSystemTrayIcon>

namespace ostrel::test {
namespace {

class TrayX11Test : public X11AppTest {
protected:
    void SetUp() override {
        tray = std::make_unique<XEmbedTrayHost>(); // before the application, as a panel is
        X11AppTest::SetUp();
    }
    void TearDown() override { tray.reset(); }

    static void clickIcon(const char* button) {
        xdotool(pointAt(XEmbedTrayHost::iconCentre()) << "click" << QLatin1String(button));
    }

    TrayDeskMenu& deskMenu() const { return *delegate().deskMenu(); }

    // Opens the tray's menu with a right click and clicks `action` in it.
    void choose(QAction* action) {
        clickIcon("3");
        QMenu* menu = delegate().menu();
        ASSERT_TRUE(waitUntil([&] { return menu->isVisible(); }));
        const QPoint centre = menu->mapToGlobal(menu->actionGeometry(action).center());
        xdotool(pointAt(centre) << "click"
                                << "1");
        ASSERT_TRUE(waitUntil([&] { return !menu->isVisible(); }));
    }

    std::unique_ptr<XEmbedTrayHost> tray;
};

TEST_F(TrayX11Test, LeftClickHidesTheWindowInFrontAndShowsItAgain) {
    ASSERT_TRUE(tray->isRunning());
    runPaired([&] {
        ASSERT_TRUE(waitUntil([&] { return tray->hasIcon(); }));
        QWidget* window = delegate().modalWindow();
        ASSERT_TRUE(waitUntil([&] { return window->isActiveWindow(); }));
        clickIcon("1");
        EXPECT_TRUE(waitUntil([&] { return !window->isVisible(); }));
        waitForPolls(12); // past the double-click interval: two clicks, not a double click
        clickIcon("1");
        EXPECT_TRUE(waitUntil([&] { return window->isVisible(); }));
        EXPECT_TRUE(waitUntil([&] { return window->isActiveWindow(); }));
    });
}

TEST_F(TrayX11Test, MenuShowsTheHeightAndItsPresetsAndStopDriveTheDesk) {
    runPaired([&] {
        ASSERT_TRUE(waitUntil([&] { return tray->hasIcon(); }));
        ASSERT_TRUE(waitUntil([&] { return control()->session().currentHeight() > 0; }));
        const QString shown = control()->heightText();
        EXPECT_EQ(deskMenu().heightLine()->text(), QStringLiteral("Height: ") + shown);
        EXPECT_FALSE(deskMenu().heightLine()->isEnabled());
        EXPECT_TRUE(delegate().statusItem()->toolTip().contains(desk->name() + ": " + shown));
        EXPECT_FALSE(deskMenu().presetAction(0)->isVisible()); // no preset set yet

        setPresets("110,0,0,0");
        ASSERT_TRUE(deskMenu().presetAction(0)->isVisible());
        EXPECT_FALSE(deskMenu().presetAction(1)->isVisible());
        EXPECT_EQ(deskMenu().presetAction(0)->text(), QStringLiteral("Sit height:43.3in"));

        ASSERT_NO_FATAL_FAILURE(choose(deskMenu().presetAction(0)));
        ASSERT_TRUE(waitUntil([&] { return desk->isMoving(); }));
        ASSERT_NO_FATAL_FAILURE(choose(deskMenu().stopAction()));
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }, 1500));
        EXPECT_LT(desk->heightTenths(), 1095) << "Stop did not stop the move";

        ASSERT_NO_FATAL_FAILURE(choose(deskMenu().presetAction(0)));
        EXPECT_TRUE(waitUntil([&] { return std::abs(desk->heightTenths() - 1100) <= 5; }));
        EXPECT_TRUE(waitUntil([&] {
            return deskMenu().heightLine()->text() ==
                   QStringLiteral("Height: ") + control()->heightText();
        }));

        // Let go of for the phone app, then connected again, from the same menu.
        ASSERT_NO_FATAL_FAILURE(choose(deskMenu().releaseAction()));
        EXPECT_TRUE(waitUntil([&] { return !desk->isSubscribed(); }, 3000));
        EXPECT_EQ(deskMenu().heightLine()->text(), QStringLiteral("Desk released"));
        EXPECT_FALSE(deskMenu().stopAction()->isEnabled());
        EXPECT_EQ(deskMenu().releaseAction()->text(), QStringLiteral("Connect desk"));
        ASSERT_NO_FATAL_FAILURE(choose(deskMenu().releaseAction()));
        EXPECT_TRUE(waitUntil([&] { return desk->isSubscribed(); }, 20000));
    });
}

} // namespace
} // namespace ostrel::test
