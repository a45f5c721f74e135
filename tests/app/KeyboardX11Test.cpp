// The control screen and its sheets from the keyboard alone, with real keys on a real X server:
// holding Up with Space while the keyboard auto-repeats, what ends such a hold, and Escape and
// Enter on pages and sheets. The virtual desk says whether it moves.
#include "X11AppTest.h"
#include "protocol/BluetoothProtocol.h"
#include "session/GoToHeightDialog.h"
#include "session/HeightSaveHelpVC.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMHoverButton.h"

#include <QKeyEvent>
#include <QLabel>

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

void space(bool down) {
    xdotool({QLatin1String(down ? "keydown" : "keyup"), QStringLiteral("space")});
}

class KeyboardX11Test : public X11AppTest {
protected:
    // Tabs through the screen until `target` has the focus.
    static void tabTo(QWidget* target) {
        for (int presses = 0; presses < 20 && QApplication::focusWidget() != target; ++presses)
            EXPECT_TRUE(tab());
    }

    // The window in front, the keyboard repeating a held key at 30 a second after 150 ms.
    void focusWithFastRepeat() const {
        focusApp();
        ASSERT_EQ(QProcess::execute(QStringLiteral("xset"), {"r", "on"}), 0);
        ASSERT_EQ(QProcess::execute(QStringLiteral("xset"), {"r", "rate", "150", "30"}), 0);
    }

    // The desk moves with a held key, the keyboard repeating it.
    void holdSpaceOnUp() {
        ASSERT_NO_FATAL_FAILURE(focusWithFastRepeat());
        tabTo(control()->upButton());
        ASSERT_EQ(QApplication::focusWidget(), control()->upButton());
        space(true);
        ASSERT_TRUE(waitUntil([&] { return desk->isMoving(); }));
        EXPECT_TRUE(control()->upButton()->isDown()) << "no pressed state while held";
    }

    static int standKeys() {
        const Bytes frame = BluetoothProtocol::cmdForTableResponseType(command::kStandKey);
        return frame[3] | frame[4] << 8;
    }

    // The runs of Stand key frames the desk received since `from`: how many polls each answered
    // in a row. A frame that answered no poll fails the test.
    std::vector<int> standRuns(std::size_t from) const {
        std::vector<int> runs;
        for (std::size_t i = from; i < desk->keyFrames().size(); ++i) {
            const auto& [at, keys, answeredPoll] = desk->keyFrames()[i];
            EXPECT_TRUE(answeredPoll) << "key " << keys << " came unasked";
            if (keys == standKeys() && (i == from || desk->keyFrames()[i - 1].keys != keys))
                runs.push_back(0);
            if (keys == standKeys())
                ++runs.back();
        }
        return runs;
    }

    // The desk heard the Stand key since `from`, then another.
    bool standLetGo(std::size_t from) const {
        return !standRuns(from).empty() && desk->keyFrames().back().keys != standKeys();
    }
};

// A preset is recalled once per press, and at least two polls hear its key: Space on the focused
// button held long enough for the keyboard to repeat (short of a long press), then a 25 ms tap
// of the touchpad.
TEST_F(KeyboardX11Test, APresetKeyPressOrShortClickRecallsOnceForTwoPolls) {
    runPaired([&] {
        setPresets("0,110,0,0"); // the screen sends the key of a set preset only
        ASSERT_NO_FATAL_FAILURE(focusWithFastRepeat());
        tabTo(control()->presetButton(1));
        RepeatCounter counter;
        std::size_t from = desk->keyFrames().size();
        space(true);
        EXPECT_TRUE(waitUntil([&] { return counter.repeats >= 3; }, 400)) << "no auto-repeat";
        space(false);
        EXPECT_TRUE(waitUntil([&] { return standLetGo(from); }));
        waitForPolls(20); // longer than a press takes to be reported
        EXPECT_EQ(standRuns(from).size(), 1u) << "auto-repeat recalled the preset again";
        EXPECT_GE(standRuns(from).front(), 2);

        from = desk->keyFrames().size();
        xdotool(pointAt(control()->presetButton(1))
                << QStringLiteral("mousedown") << QStringLiteral("1") << QStringLiteral("sleep")
                << QStringLiteral("0.025") << QStringLiteral("mouseup") << QStringLiteral("1"));
        ASSERT_TRUE(waitUntil([&] { return standLetGo(from); }));
        EXPECT_GE(standRuns(from).front(), 2);
    });
}

// Space held on Up moves the desk through the keyboard's auto-repeat, and its release ends the
// hold; so do Escape, a second key and the focus moving on (Tab), although Space is still down
// and repeating, and its release later changes nothing.
struct HoldEnding {
    const char* name;
    const char* action; // an xdotool command
    const char* key;
};

class EndsKeyHoldTest : public KeyboardX11Test, public ::testing::WithParamInterface<HoldEnding> {};

TEST_P(EndsKeyHoldTest, StopsTheDesk) {
    runPaired([&] {
        RepeatCounter counter;
        int stops = 0;
        bool wasMoving = false;
        const auto watch = QObject::connect(desk, &VirtualDesk::keysReceived, [&] {
            stops += wasMoving && !desk->isMoving();
            wasMoving = desk->isMoving();
        });
        ASSERT_NO_FATAL_FAILURE(holdSpaceOnUp());
        const int start = desk->heightTenths();
        waitForPolls(16); // 0.8 s: the keyboard repeats about 20 times
        EXPECT_GT(counter.repeats, 5) << "the keyboard did not repeat: the test proves nothing";
        EXPECT_EQ(stops, 0) << "auto-repeat stopped the desk";
        EXPECT_GT(desk->heightTenths(), start);
        QObject::disconnect(watch);

        xdotool({QLatin1String(GetParam().action), QLatin1String(GetParam().key)});
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }, 500));
        EXPECT_TRUE(stillAfterPolls(8)) << "auto-repeat started the desk again";
        EXPECT_FALSE(control()->upButton()->isDown());
        space(false);
        EXPECT_TRUE(stillAfterPolls(4));
    });
}

INSTANTIATE_TEST_SUITE_P(Endings, EndsKeyHoldTest,
                         ::testing::Values(HoldEnding{"ReleaseOfSpace", "keyup", "space"},
                                           HoldEnding{"Escape", "key", "Escape"},
                                           HoldEnding{"SecondKey", "key", "a"},
                                           HoldEnding{"Tab", "key", "Tab"}),
                         kRowName);

// Enter on the height asks for one; Enter in the dialog moves the desk there and the dialog
// shows the move; Escape stops it and closes the dialog.
TEST_F(KeyboardX11Test, GoToHeightByKeyboardShowsTheMoveAndEscapeStopsIt) {
    runPaired([&] {
        tabTo(control()->heightLabel());
        auto* dialog = qobject_cast<GoToHeightDialog*>(windowAfter([] { key("Return"); }));
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->rangeText(), QStringLiteral("Between 23.6 and 47.2 in")); // inches first
        key("ctrl+a");
        xdotool({QStringLiteral("type"), QStringLiteral("45")});
        key("Return");
        ASSERT_TRUE(waitUntil([&] { return desk->isMoving() && dialog->showsMoving(); }));
        key("Escape");
        EXPECT_TRUE(waitUntil([&] { return !desk->isMoving(); }, 1500));
        EXPECT_LT(desk->heightTenths(), 1140) << "Escape did not stop the move";
        EXPECT_TRUE(stillAfterPolls(6));
    });
}

// Escape leaves a settings page; the help sheet closes with Escape, the save sheet takes Enter
// as its default, Confirm.
TEST_F(KeyboardX11Test, EscapeLeavesPagesAndSheetsAndEnterConfirms) {
    runPaired([&] {
        emit control()->settingsRequested();
        ASSERT_TRUE(waitUntil([&] { return control()->pageCount() == 1; }));
        key("Escape");
        EXPECT_TRUE(waitUntil([&] { return control()->pageCount() == 0; }));

        QWidget* help = windowAfter([] { key("F1"); });
        ASSERT_NE(qobject_cast<HeightSaveHelpVC*>(help), nullptr);
        key("Escape");
        EXPECT_TRUE(waitUntil([&] { return !help->isVisible(); }));

        // Space held on Sit past the long press opens the save sheet; Enter confirms it and the
        // desk is asked to store its height.
        focusApp();
        tabTo(control()->presetButton(0));
        const int height = desk->heightTenths();
        QWidget* sheet = windowAfter([] { space(true); });
        ASSERT_NE(sheet, nullptr);
        space(false);
        key("Return");
        EXPECT_TRUE(waitUntil([&] { return !sheet->isVisible(); }));
        EXPECT_TRUE(presetSaved(height));
    });
}

} // namespace
} // namespace ostrel::test
