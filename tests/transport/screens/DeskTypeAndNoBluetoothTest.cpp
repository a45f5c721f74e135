#include "ScreenTestSupport.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "transport/screens/BluetoothSearchVC.h"
#include "transport/screens/DeskTypeCell.h"
#include "transport/screens/DeskTypeTable.h"
#include "transport/screens/DeskTypeVC.h"
#include "transport/screens/NoBluetoothVC.h"

#include <QPointer>
#include <QPushButton>
#include <QTest>

namespace ostrel::test {
namespace {

class DeskTypeAndNoBluetoothTest : public ScreenTest {
protected:
    void setRadio(bool on) {
        central->setPowered(on);
        advance(100ms);
    }

    const int& deleteCurrentDevicePosts = countPosts(notifications::kDeleteCurrentDevice);
};

// The rows themselves are data; what is logic is the fall-back past the end.
TEST(DeskTypeTableTest, IndicesPastTheEndFallBackToTheLastModel) {
    const DeskTypeRow last = DeskTypeTable::row(DeskTypeTable::kRowCount - 1);
    for (int index : {DeskTypeTable::kRowCount, 99}) {
        EXPECT_STREQ(DeskTypeTable::row(index).label, last.label) << index;
        EXPECT_STREQ(DeskTypeTable::row(index).foldName, last.foldName) << index;
    }
}

// With the radio on the choice leads to search (DeskTypeFlowTest); with it off, here.
TEST_F(DeskTypeAndNoBluetoothTest, ChoosingAModelWithTheRadioOffStoresItAndShowsNoBluetooth) {
    setRadio(false);
    DeskTypeVC screen;
    ASSERT_EQ(screen.cells().size(), DeskTypeTable::kRowCount);
    EXPECT_TRUE(screen.cells().back()->isVisibleTo(&screen));
    click(screen.cells().at(0));
    EXPECT_EQ(CurrentDeskModel::name(), "D5Plus");
    scheduler.runDue();
    EXPECT_EQ(deleteCurrentDevicePosts, 1);
    EXPECT_EQ(routed, QStringList{screens::kNoBluetooth});
}

// The real search and desk type screens in the home window, one at a time, reached by clicks.
class DeskTypeFlowTest : public DeskTypeAndNoBluetoothTest {
protected:
    void SetUp() override {
        DeskTypeAndNoBluetoothTest::SetUp();
        OMScreenRouter& router = OMScreenRouter::instance();
        router.registerScreen(screens::kBluetoothSearch, [] { return new BluetoothSearchVC; });
        router.registerScreen(screens::kDeskType, [] { return new DeskTypeVC; });
        router.setHost([this](QWidget* screen) {
            delete current;
            current = screen;
            screen->setParent(home.get());
            screen->show();
        });
        home->resize(400, 500);
        home->show();
    }

    void TearDown() override {
        delete current; // before the radio it scans with
        DeskTypeAndNoBluetoothTest::TearDown();
    }

    // The screen in the home window once pending moves are done, if it is a `Screen`.
    template <class Screen> Screen* shown() {
        scheduler.runDue();
        return qobject_cast<Screen*>(current.data());
    }

    DeskTypeVC* clickThroughToDeskType() {
        auto* search = shown<BluetoothSearchVC>();
        EXPECT_TRUE(search && search->deskTypeButton()->isVisible());
        if (search)
            QTest::mouseClick(search->deskTypeButton(), Qt::LeftButton);
        return shown<DeskTypeVC>();
    }

    QPointer<QWidget> current;
};

TEST_F(DeskTypeFlowTest, SearchLeadsToTheDeskTypeScreenAndBack) {
    OMScreenRouter::instance().show(screens::kBluetoothSearch);
    EXPECT_EQ(shown<BluetoothSearchVC>()->deskTypeButton()->text(), "Choose desk model");

    DeskTypeVC* type = clickThroughToDeskType();
    ASSERT_TRUE(type);
    EXPECT_EQ(type->backButton()->text(), "Back");
    QTest::mouseClick(type->backButton(), Qt::LeftButton);
    EXPECT_TRUE(shown<BluetoothSearchVC>());
    EXPECT_EQ(CurrentDeskModel::name(), "D5"); // back keeps the model

    type = clickThroughToDeskType();
    ASSERT_TRUE(type);
    QTest::mouseClick(type->cells().at(3), Qt::LeftButton);
    EXPECT_TRUE(shown<BluetoothSearchVC>());
    EXPECT_EQ(CurrentDeskModel::name(), "D5Pro");
    EXPECT_EQ(deleteCurrentDevicePosts, 2);
}

TEST_F(DeskTypeAndNoBluetoothTest, PairAsksTheRadioAgain) {
    setRadio(false);
    NoBluetoothVC screen;
    screen.pairButton()->click();
    scheduler.runDue();
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(QStringList({alerts[0].message, alerts[0].informativeText}) + alerts[0].buttons,
              QStringList({"Tip",
                           "No Bluetooth connection, please turn on your device's Bluetooth to "
                           "establish a connection",
                           "OK"}));
    EXPECT_TRUE(routed.isEmpty()); // the screen stays
    EXPECT_EQ(deleteCurrentDevicePosts, 1);

    setRadio(true);
    screen.pairButton()->click();
    scheduler.runDue();
    EXPECT_EQ(alerts.size(), 1u);
    EXPECT_EQ(routed, QStringList{screens::kBluetoothSearch});
    EXPECT_EQ(deleteCurrentDevicePosts, 2);
}

// A stack that cannot serve at all is not fixed by turning the radio on: the screen says why,
// and Pair repeats what the screen says now.
TEST_F(DeskTypeAndNoBluetoothTest, AStackThatCannotServeSaysWhyAndHowToFixIt) {
    setRadio(false);
    struct Case {
        int problem;
        const char* mentions;
    };
    const Case cases[] = {
        {PlatformCentral::StackNotRunning, "systemctl enable --now bluetooth"},
        {PlatformCentral::StackRefusesUser, "usermod -aG bluetooth"},
        {PlatformCentral::StackUsable, "turn on your device's Bluetooth"},
    };
    for (const Case& c : cases) {
        central->setStackProblem(c.problem);
        NoBluetoothVC screen;
        EXPECT_TRUE(screen.shownText().contains(QLatin1String(c.mentions))) << c.problem;
    }

    central->setStackProblem(PlatformCentral::StackRefusesUser);
    NoBluetoothVC screen;
    central->setStackProblem(PlatformCentral::StackUsable); // fixed while the screen was up
    screen.pairButton()->click();
    scheduler.runDue();
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].informativeText, NoBluetoothVC::noBluetoothText());
    EXPECT_EQ(screen.shownText(), NoBluetoothVC::noBluetoothText());
}

} // namespace
} // namespace ostrel::test
