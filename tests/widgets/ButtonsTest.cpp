#include "WidgetTestSupport.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMDeskPicture.h"
#include "widgets/OMRotatingImage.h"
#include "widgets/OMSwitchButton.h"

#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>

using namespace ostrel;
using std::chrono::milliseconds;

class ButtonsTest : public test::VirtualTimeTest {};

TEST_F(ButtonsTest, HoldButtonReportsAtOnceAndReleasesWhereverThePointerIs) {
    HomeFunctionBtn up("control_up");
    up.resize(56, 56);
    QSignalSpy down(&up, &HomeFunctionBtn::touchDwon);
    QSignalSpy released(&up, &HomeFunctionBtn::touchUp);

    test::sendMouse(&up, QEvent::MouseButtonPress);
    EXPECT_EQ(down.count(), 1);
    QMouseEvent drag(QEvent::MouseMove, QPointF(150, 150), QPointF(150, 150), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&up, &drag);
    EXPECT_EQ(released.count(), 0) << "dragging off must not let go of the key";
    test::sendMouse(&up, QEvent::MouseButtonRelease);
    EXPECT_EQ(released.count(), 1);
    up.setEnabled(false);
    EXPECT_EQ(released.count(), 1) << "a hold that ended is not ended again";
    EXPECT_EQ(clock.pendingCount(), 0u) << "hold buttons must not delay anything";
}

// Keys as the window system delivers them, auto-repeat included: each step is a key pressed or
// released, repeated or not; "focus" takes the focus away.
TEST_F(ButtonsTest, HoldButtonFollowsTheKeyAndNotItsRepeats) {
    struct Step {
        QEvent::Type type;
        int key;
        bool repeat = false;
    };
    const auto press = [](int key, bool repeat = false) {
        return Step{QEvent::KeyPress, key, repeat};
    };
    const auto release = [](int key, bool repeat = false) {
        return Step{QEvent::KeyRelease, key, repeat};
    };
    const Step focusOut{QEvent::FocusOut, 0};
    const struct {
        const char* name;
        std::vector<Step> steps;
        int held; // hold reports while the steps run
        int releasedBeforeLast;
    } cases[] = {
        {"space repeating",
         {press(Qt::Key_Space), release(Qt::Key_Space, true), press(Qt::Key_Space, true),
          release(Qt::Key_Space, true), press(Qt::Key_Space, true), release(Qt::Key_Space)},
         1,
         0},
        {"enter",
         {press(Qt::Key_Return), press(Qt::Key_Return, true), release(Qt::Key_Return)},
         1,
         0},
        // A repeat that Qt could not tell from a release: the press follows within the grace.
        {"space repeating, release seen first",
         {press(Qt::Key_Space), release(Qt::Key_Space), press(Qt::Key_Space),
          release(Qt::Key_Space)},
         1,
         0},
        {"escape ends it",
         {press(Qt::Key_Space), press(Qt::Key_Escape), press(Qt::Key_Space, true),
          release(Qt::Key_Space)},
         1,
         1},
        {"second key ends it",
         {press(Qt::Key_Space), press(Qt::Key_A), release(Qt::Key_Space)},
         1,
         1},
        {"focus loss ends it", {press(Qt::Key_Space), focusOut, release(Qt::Key_Space)}, 1, 1},
    };
    for (const auto& tested : cases) {
        HomeFunctionBtn up("control_up");
        QSignalSpy down(&up, &HomeFunctionBtn::touchDwon);
        QSignalSpy released(&up, &HomeFunctionBtn::touchUp);
        for (std::size_t i = 0; i < tested.steps.size(); ++i) {
            if (i + 1 == tested.steps.size()) {
                clock.advance(HomeFunctionBtn::kRepeatGrace);
                EXPECT_EQ(released.count(), tested.releasedBeforeLast) << tested.name;
            }
            const Step& step = tested.steps[i];
            if (step.type == QEvent::FocusOut) {
                QFocusEvent event(QEvent::FocusOut, Qt::TabFocusReason);
                QApplication::sendEvent(&up, &event);
            } else {
                QKeyEvent event(step.type, step.key, Qt::NoModifier, QString(), step.repeat);
                QApplication::sendEvent(&up, &event);
            }
        }
        clock.advance(HomeFunctionBtn::kRepeatGrace);
        EXPECT_EQ(down.count(), tested.held) << tested.name;
        EXPECT_EQ(released.count(), 1) << tested.name << ": the hold must end exactly once";
        EXPECT_FALSE(up.isDown()) << tested.name;
    }
}

TEST_F(ButtonsTest, SwitchFlipsOnClickAndFollowsSetChecked) {
    OMSwitchButton sw;
    sw.resize(44, 26);
    EXPECT_EQ(sw.imageName(), "setting_switchclose");
    QTest::mouseClick(&sw, Qt::LeftButton);
    EXPECT_EQ(sw.imageName(), "setting_switchopen");
    QTest::mouseClick(&sw, Qt::LeftButton);
    EXPECT_EQ(sw.imageName(), "setting_switchclose");
    sw.setChecked(true);
    EXPECT_EQ(sw.imageName(), "setting_switchopen");
}

TEST_F(ButtonsTest, RefreshTurnsOnceASecondUntilStoppedUpright) {
    OMRotatingImage refresh("connect_refresh");
    refresh.startRotating();
    refresh.startRotating(); // a second start must not double the speed
    at(250);
    EXPECT_NEAR(refresh.rotation(), 86.4, 0.01); // six 40 ms frames of 14.4 degrees
    at(10'000);
    EXPECT_EQ(refresh.rotation(), 0.0) << "whole turns must not drift";
    refresh.stopRotating();
    at(10'100);
    EXPECT_EQ(refresh.rotation(), 0.0);
    EXPECT_EQ(clock.pendingCount(), 0u);
}

TEST_F(ButtonsTest, TurnEasesToItsAngleAndAReplacedTurnNeverFinishes) {
    OMImageButton gear("control_set");
    int finished = 0;
    gear.turnTo(-30.0, milliseconds(300), [&] { ++finished; });
    at(48);
    EXPECT_GT(gear.rotation(), -5.0) << "should start slowly";
    at(304);
    EXPECT_EQ(gear.rotation(), -30.0);
    EXPECT_EQ(finished, 1);

    gear.turnTo(0.0, milliseconds(300), [&] { finished += 10; });
    at(400);
    gear.turnTo(-30.0, milliseconds(300), [&] { ++finished; });
    at(2000);
    EXPECT_EQ(gear.rotation(), -30.0);
    EXPECT_EQ(finished, 2);
    EXPECT_EQ(clock.pendingCount(), 0u);
}

// Layers are drawn top first and bottom last: pushing the top layer down by its full travel
// moves the tabletop down by as much, and an unknown model still draws (as the D5).
TEST_F(ButtonsTest, DeskPictureOffsetsMoveTheTopLayerDown) {
    OMDeskPicture desk("D9 Ultra");
    EXPECT_EQ(desk.model(), "D5");
    desk.resize(desk.sizeHint());
    auto alphaAt = [&desk](int x, int y) {
        QImage image(desk.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        desk.render(&image, {}, {}, QWidget::DrawChildren);
        return image.pixelColor(x, y).alpha();
    };
    EXPECT_GT(alphaAt(120, 40), 0);
    desk.setLayerOffsets(40.7 + 48.4, 48.4);
    EXPECT_EQ(alphaAt(120, 40), 0);
    EXPECT_GT(alphaAt(120, 40 + 89), 0);
}

// A standing desk reports the same height 20 times a second; only a change is worth a repaint.
TEST_F(ButtonsTest, DeskPictureRepaintsOnlyWhenItsOffsetsChange) {
    OMDeskPicture desk;
    desk.resize(desk.sizeHint());
    desk.show();
    int paints = 0;
    struct PaintCounter : QObject {
        int* count;
        explicit PaintCounter(int* c) : count(c) {}
        bool eventFilter(QObject*, QEvent* event) override {
            *count += event->type() == QEvent::Paint;
            return false;
        }
    } counter(&paints);
    desk.installEventFilter(&counter);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&desk));
    desk.setLayerOffsets(10.0, 5.0);
    QCoreApplication::processEvents();
    const int afterChange = paints;
    ASSERT_GT(afterChange, 0);
    desk.setLayerOffsets(10.0, 5.0);
    QCoreApplication::processEvents();
    EXPECT_EQ(paints, afterChange);
    desk.setLayerOffsets(11.0, 5.0);
    QCoreApplication::processEvents();
    EXPECT_GT(paints, afterChange);
}
