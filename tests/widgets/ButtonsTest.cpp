#include "WidgetTestSupport.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMDeskPicture.h"
#include "widgets/OMRotatingImage.h"
#include "widgets/OMSwitchButton.h"

#include <QSignalSpy>
#include <QTest>

using namespace ostrel;
using ostrel::test::sendMouse;

TEST(HomeFunctionBtn, ReportsPressAndReleaseAtOnceWhereverThePointerIs) {
    ManualScheduler clock;
    Scheduler* previous = Scheduler::setInstance(&clock);
    QWidget window;
    auto* up = new HomeFunctionBtn("control_up", &window);
    up->setGeometry(0, 0, 56, 56);
    window.resize(200, 200);
    QSignalSpy down(up, &HomeFunctionBtn::touchDwon);
    QSignalSpy released(up, &HomeFunctionBtn::touchUp);

    sendMouse(up, QEvent::MouseButtonPress);
    EXPECT_EQ(down.count(), 1);
    EXPECT_EQ(released.count(), 0);
    // Dragging off the button keeps the key held until the mouse button comes up.
    QMouseEvent drag(QEvent::MouseMove, QPointF(150, 150), up->mapToGlobal(QPointF(150, 150)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(up, &drag);
    EXPECT_EQ(released.count(), 0);
    sendMouse(up, QEvent::MouseButtonRelease);
    ASSERT_EQ(released.count(), 1);
    EXPECT_EQ(released.at(0).at(0).value<HomeFunctionBtn*>(), up);
    EXPECT_EQ(clock.pendingCount(), 0u) << "hold buttons must not delay anything";
    Scheduler::setInstance(previous);
}

TEST(OMSwitchButton, ClickFlipsStateAndPictureWhileSetCheckedOnlyFollows) {
    OMSwitchButton sw;
    sw.resize(44, 26);
    QSignalSpy toggled(&sw, &QAbstractButton::toggled);
    EXPECT_EQ(sw.imageName(), "setting_switchclose");

    QTest::mouseClick(&sw, Qt::LeftButton);
    EXPECT_TRUE(sw.isChecked());
    EXPECT_EQ(sw.imageName(), "setting_switchopen");
    QTest::mouseClick(&sw, Qt::LeftButton);
    EXPECT_FALSE(sw.isChecked());
    EXPECT_EQ(sw.imageName(), "setting_switchclose");

    QSignalSpy clicked(&sw, &QAbstractButton::clicked);
    sw.setChecked(true);
    EXPECT_EQ(sw.imageName(), "setting_switchopen");
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_EQ(toggled.count(), 3);
}

class OMRotatingImageTest : public test::VirtualTimeTest {};

TEST_F(OMRotatingImageTest, TurnsOnceASecondUntilStoppedUpright) {
    OMRotatingImage refresh("connect_refresh");
    refresh.startRotating();
    refresh.startRotating(); // a second start must not double the speed
    at(250);
    EXPECT_NEAR(refresh.rotation(), 86.4, 0.01); // six 40 ms frames of 14.4 degrees
    at(1000);
    EXPECT_EQ(refresh.rotation(), 0.0);
    EXPECT_TRUE(refresh.isRotating());

    refresh.stopRotating();
    EXPECT_FALSE(refresh.isRotating());
    EXPECT_EQ(refresh.rotation(), 0.0);
    at(2000);
    EXPECT_EQ(refresh.rotation(), 0.0);
    EXPECT_EQ(clock.pendingCount(), 0u);
}

TEST(OMDeskPicture, EachModelHasItsOwnLayersAndUnknownModelsDrawAsD5) {
    OMDeskPicture desk;
    for (const QString model : {"D5Plus", "D5Q", "D5L", "D5Pro", "D5"}) {
        desk.setModel(model);
        EXPECT_EQ(desk.model(), model);
        EXPECT_EQ(desk.layerNames(),
                  QStringList({"control_" + model + "_desktop", "control_" + model + "_deskmid",
                               "control_" + model + "_deskbottom"}));
    }
    desk.setModel("D9 Ultra");
    EXPECT_EQ(desk.model(), "D5");
    desk.setModel({});
    EXPECT_EQ(desk.model(), "D5");
}

// The layers are drawn top first and bottom last, so at full height the upper stage shows where
// the picture puts it, and pushing the top layer down by its full travel hides the stage in the
// sleeve: the column just above the sleeve is then background.
TEST(OMDeskPicture, OffsetsMoveTheTopLayerDown) {
    OMDeskPicture desk("D5");
    desk.resize(desk.sizeHint());
    ASSERT_EQ(desk.sizeHint(), QSize(240, 220));
    auto pixelAt = [&desk](int x, int y) {
        QImage image(desk.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        desk.render(&image, {}, {}, QWidget::DrawChildren);
        return image.pixelColor(x, y);
    };

    const QColor tabletopAtFullHeight = pixelAt(120, 40);
    EXPECT_GT(tabletopAtFullHeight.alpha(), 0);
    desk.setLayerOffsets(40.7 + 48.4, 48.4);
    EXPECT_EQ(pixelAt(120, 40).alpha(), 0) << "the tabletop should have moved down";
    EXPECT_GT(pixelAt(120, 40 + 89).alpha(), 0);
}
