// The control screen and its sheets from the keyboard alone, with real keys on a real X server:
// the tab order, holding Up with Space while the keyboard auto-repeats, what ends such a hold,
// and Escape and Enter on pages and sheets. The virtual desk says whether it moves.
#include "X11AppTest.h"
#include "session/GoToHeightDialog.h"
#include "session/HeightSaveHelpVC.h"
#include "store/CurrentDeviceStore.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMHoverButton.h"
#include "widgets/OMImageButton.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QKeyEvent>
#include <QLabel>
#include <gtest/gtest.h>

namespace ostrel::test {
namespace {

// Counts the auto-repeated key presses the application receives, so a test knows the keyboard
// really repeated while it held a key.
class RepeatCounter : public QObject {
public:
    RepeatCounter() { qApp->installEventFilter(this); }
    ~RepeatCounter() override { qApp->removeEventFilter(this); }
    int repeats = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->isAutoRepeat() &&
            watched == QApplication::focusWidget())
            ++repeats;
        return false;
    }
};

class KeyboardX11Test : public X11AppTest {
protected:
    static void key(const char* name) { xdotool({QStringLiteral("key"), QLatin1String(name)}); }

    // Tabs through the screen from its start until `target` has the focus; the widgets met on
    // the way, in order.
    QList<QWidget*> tabTo(QWidget* target) {
        QList<QWidget*> met;
        for (int presses = 0; presses < 20 && QApplication::focusWidget() != target; ++presses) {
            QWidget* before = QApplication::focusWidget();
            key("Tab");
            EXPECT_TRUE(waitUntil([&] { return QApplication::focusWidget() != before; }));
            met.append(QApplication::focusWidget());
        }
        return met;
    }

    // The desk moves with a held key, the keyboard repeating it at 30 a second after 150 ms.
    void holdSpaceOnUp() {
        xdotool({QStringLiteral("windowfocus"),
                 QString::number(runner->delegate().modalWindow()->winId())});
        ASSERT_EQ(QProcess::execute(QStringLiteral("xset"), {"r", "on"}), 0);
        ASSERT_EQ(QProcess::execute(QStringLiteral("xset"), {"r", "rate", "150", "30"}), 0);
        tabTo(control()->upButton());
        ASSERT_EQ(QApplication::focusWidget(), control()->upButton());
        xdotool({QStringLiteral("keydown"), QStringLiteral("space")});
        ASSERT_TRUE(waitUntil([&] { return desk->isMoving(); }));
        EXPECT_TRUE(control()->upButton()->isDown()) << "no pressed state while held";
    }

    bool stoppedWithinPolls(int polls) {
        waitForPolls(polls);
        return !desk->isMoving();
    }
};

TEST_F(KeyboardX11Test, TabFollowsTheControlScreenFromTopToBottom) {
    run([&] {
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        DeskControlVC* screen = control();
        const QList<QWidget*> met = tabTo(screen->presetButton(DeskControlVC::kPresetCount - 1));
        const QList<QWidget*> expected{
            screen->helpButton(),    screen->settingsButton(), screen->heightLabel(),
            screen->upButton(),      screen->downButton(),     screen->presetButton(0),
            screen->presetButton(1), screen->presetButton(2),  screen->presetButton(3)};
        qsizetype last = -1;
        for (QWidget* widget : expected) {
            const qsizetype at = met.indexOf(widget);
            EXPECT_GT(at, last) << widget->metaObject()->className() << " out of order";
            last = at;
        }
    });
}

TEST_F(KeyboardX11Test, SpaceHoldsUpThroughAutoRepeatAndReleasesWithTheKey) {
    run([&] {
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        RepeatCounter counter;
        int stops = 0;
        bool wasMoving = false;
        const auto watch = QObject::connect(desk, &VirtualDesk::keysReceived, [&] {
            if (wasMoving && !desk->isMoving())
                ++stops;
            wasMoving = desk->isMoving();
        });
        ASSERT_NO_FATAL_FAILURE(holdSpaceOnUp());
        const int start = desk->heightTenths();
        waitForPolls(16); // 0.8 s: the keyboard repeats about 20 times
        EXPECT_GT(counter.repeats, 5) << "the keyboard did not repeat: the test proves nothing";
        EXPECT_EQ(stops, 0) << "auto-repeat stopped the desk";
        EXPECT_GT(desk->heightTenths(), start);

        xdotool({QStringLiteral("keyup"), QStringLiteral("space")});
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }, 500));
        EXPECT_TRUE(stoppedWithinPolls(6)) << "moving again after the release";
        EXPECT_FALSE(control()->upButton()->isDown());
        QObject::disconnect(watch);
    });
}

// Escape, a second key and the focus moving on (Tab) each end the hold, although Space is still
// down and repeating; its release later changes nothing.
class EndsKeyHoldTest : public KeyboardX11Test,
                        public ::testing::WithParamInterface<const char*> {};

TEST_P(EndsKeyHoldTest, StopsTheDesk) {
    run([&] {
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        ASSERT_NO_FATAL_FAILURE(holdSpaceOnUp());
        waitForPolls(6);
        key(GetParam());
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }, 500));
        EXPECT_TRUE(stoppedWithinPolls(8)) << "auto-repeat started the desk again";
        xdotool({QStringLiteral("keyup"), QStringLiteral("space")});
        EXPECT_TRUE(stoppedWithinPolls(4));
    });
}

INSTANTIATE_TEST_SUITE_P(Endings, EndsKeyHoldTest, ::testing::Values("Escape", "a", "Tab"),
                         [](const ::testing::TestParamInfo<const char*>& tested) {
                             return std::string(tested.param) == "a" ? std::string("SecondKey")
                                                                     : std::string(tested.param);
                         });

// Enter on the height asks for one; Enter in the dialog moves the desk there and the dialog
// shows the move; Escape stops it and closes the dialog.
TEST_F(KeyboardX11Test, GoToHeightByKeyboardShowsTheMoveAndEscapeStopsIt) {
    run([&] {
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        tabTo(control()->heightLabel());
        key("Return");
        GoToHeightDialog* dialog = nullptr;
        ASSERT_TRUE(waitUntil([&] {
            dialog = qobject_cast<GoToHeightDialog*>(QApplication::activeWindow());
            return dialog && dialog->isVisible();
        }));
        EXPECT_EQ(dialog->rangeText(), QStringLiteral("Between 23.6 and 47.2 in")); // inches first
        xdotool({QStringLiteral("key"), QStringLiteral("ctrl+a")});
        xdotool({QStringLiteral("type"), QStringLiteral("45")});
        key("Return");
        ASSERT_TRUE(waitUntil([&] { return desk->isMoving() && dialog->showsMoving(); }));
        key("Escape");
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }, 1500));
        EXPECT_LT(desk->heightTenths(), 1140) << "Escape did not stop the move";
        EXPECT_TRUE(stoppedWithinPolls(6));
    });
}

// Escape leaves a settings page; the help sheet closes with Escape, the save sheet takes Enter
// as its default, Confirm.
TEST_F(KeyboardX11Test, EscapeLeavesPagesAndSheetsAndEnterConfirms) {
    run([&] {
        ASSERT_NO_FATAL_FAILURE(pairDesk());
        emit control()->settingsRequested();
        ASSERT_TRUE(waitUntil([&] { return control()->pageCount() == 1; }));
        key("Escape");
        EXPECT_TRUE(waitUntil([&] { return control()->pageCount() == 0; }));

        key("F1");
        QWidget* help = nullptr;
        ASSERT_TRUE(waitUntil([&] {
            help = qobject_cast<HeightSaveHelpVC*>(QApplication::activeWindow());
            return help != nullptr;
        }));
        key("Escape");
        EXPECT_TRUE(waitUntil([&] { return !help->isVisible(); }));

        // Space held on Sit past the long press opens the save sheet; Enter confirms it and the
        // desk is asked to store its height.
        xdotool({QStringLiteral("windowfocus"),
                 QString::number(runner->delegate().modalWindow()->winId())});
        tabTo(control()->presetButton(0));
        const int height = desk->heightTenths();
        xdotool({QStringLiteral("keydown"), QStringLiteral("space")});
        QWidget* sheet = nullptr;
        ASSERT_TRUE(waitUntil([&] {
            sheet = QApplication::activeWindow() != runner->delegate().modalWindow()
                        ? QApplication::activeWindow()
                        : nullptr;
            return sheet != nullptr;
        }));
        xdotool({QStringLiteral("keyup"), QStringLiteral("space")});
        key("Return");
        EXPECT_TRUE(waitUntil([&] { return !sheet->isVisible(); }));
        EXPECT_TRUE(waitUntil([&] {
            return CurrentDeviceStore::load().memoryHeight.value_or("").starts_with(
                std::to_string((height + 5) / 10) + ",");
        }));
    });
}

} // namespace
} // namespace ostrel::test
