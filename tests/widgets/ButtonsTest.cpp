#include "WidgetTestSupport.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMDeskPicture.h"
#include "widgets/OMRotatingImage.h"

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

// A key held on the button, as X11 delivers it when it repeats: marked repeats, or a repeat that
// Qt could not tell from a release, its press following at once. Either way one hold, ended
// once by the real release. (Escape, a second key and focus loss are tested with real keys.)
TEST_F(ButtonsTest, HoldButtonFollowsTheKeyAndNotItsRepeats) {
    const auto send = [](QWidget* button, QEvent::Type type, bool repeat = false) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, QString(), repeat);
        QApplication::sendEvent(button, &event);
    };
    for (const bool marked : {true, false}) {
        HomeFunctionBtn up("control_up");
        QSignalSpy down(&up, &HomeFunctionBtn::touchDwon);
        QSignalSpy released(&up, &HomeFunctionBtn::touchUp);
        send(&up, QEvent::KeyPress);
        for (int repeat = 0; repeat < 3; ++repeat) {
            send(&up, QEvent::KeyRelease, marked);
            send(&up, QEvent::KeyPress, marked);
            clock.advance(HomeFunctionBtn::kRepeatGrace);
        }
        EXPECT_EQ(released.count(), 0) << (marked ? "marked" : "unmarked") << " repeats";
        send(&up, QEvent::KeyRelease);
        clock.advance(HomeFunctionBtn::kRepeatGrace);
        EXPECT_EQ(down.count(), 1);
        EXPECT_EQ(released.count(), 1);
    }
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
// moves the tabletop down by as much, and an unknown model still draws (as the D5). A standing
// desk reports the same height 20 times a second; only a change is worth a repaint.
TEST_F(ButtonsTest, DeskPictureOffsetsMoveTheTopLayerDownAndRepaintOnlyWhenTheyChange) {
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
