#include "SettingsTestSupport.h"
#include "protocol/BluetoothProtocol.h"
#include "settings/ColorManageView.h"
#include "settings/ColorWellView.h"
#include "widgets/OMImageButton.h"

namespace ostrel::test {
namespace {

class LightStripTest : public SettingsTest {
protected:
    // The light-strip button appears with the desk's first report and opens the page.
    ColorManageView& openPage() {
        desk = &bindDesk();
        openControlWithSettings();
        advance(500ms);
        EXPECT_TRUE(control->lightStripButton()->isVisible());
        control->lightStripButton()->click();
        return *top<ColorManageView>();
    }

    // The desk's own state changed (its keypad, another host): it reports it.
    void deskSets(int open, int mode) {
        desk->writeFromHost(
            *BluetoothProtocol::cmdForLightStripColorWithSwitchStatus(open, mode, 10, 20, 30));
        advance(200ms);
    }

    VirtualDesk* desk = nullptr;
};

TEST_F(LightStripTest, SwitchingSendsOnlyChangesAndResendsTheCurrentChoice) {
    ColorManageView& page = openPage();
    EXPECT_EQ(page.lightColor().open, 0);
    EXPECT_EQ(page.statusImageName(), "color_close");
    const int before = desk->lightCommandsReceived();

    page.offButton()->click();
    advance(100ms);
    EXPECT_EQ(desk->lightCommandsReceived(), before);

    page.schemeButton(3)->click(); // while off
    advance(100ms);
    EXPECT_EQ(desk->lightStrip().switchStatus, 0);
    EXPECT_EQ(desk->lightStrip().mode, 3);

    page.onButton()->click();
    page.onButton()->click();
    advance(100ms);
    EXPECT_EQ(desk->lightCommandsReceived(), before + 2);
    EXPECT_EQ(desk->lightStrip().switchStatus, 1);
    EXPECT_EQ(desk->lightStrip().mode, 3);
    EXPECT_EQ(page.statusImageName(), "color_open");
    EXPECT_TRUE(page.onButton()->isChecked());
    EXPECT_FALSE(page.offButton()->isChecked());
}

TEST_F(LightStripTest, TheWellSendsThePixelUnderThePointerGreenRedBlueOnTheWire) {
    ColorManageView& page = openPage();
    ColorWellView* well = page.colorWell();
    auto pick = [this, well](QPoint point) {
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(point),
                          well->mapToGlobal(QPointF(point)), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(well, &press);
        advance(100ms);
        const VirtualDesk::LightStrip& strip = desk->lightStrip();
        return std::tuple(strip.mode, strip.red, strip.green, strip.blue);
    };
    const int custom = ColorManageView::kCustomMode;
    EXPECT_EQ(pick(QPoint(0, well->height() / 2)), std::tuple(custom, 255, 0, 0)); // pure hues
    EXPECT_EQ(page.swatchColor(), QColor(255, 0, 0));
    EXPECT_EQ(pick(QPoint(well->width() / 2, 0)), std::tuple(custom, 255, 255, 255)); // white
    EXPECT_FALSE(well->colorAt(QPoint(-1, 10)).isValid());
    // Components are truncated, not rounded.
    EXPECT_EQ(ColorManageView::channel(0.999f), 254);
    EXPECT_EQ(ColorManageView::channel(1.0f), 255);
    EXPECT_EQ(ColorManageView::channel(0.0f), 0);
}

// Only a change of on/off reaches an open page; the mode alone waits for the next opening.
TEST_F(LightStripTest, ThePageFollowsTheDeskSwitchingTheStripOnOrOff) {
    ColorManageView& page = openPage();
    deskSets(0, 5);
    EXPECT_EQ(page.lightColor().mode, 1);

    deskSets(1, 6);
    EXPECT_EQ(page.lightColor().open, 1);
    EXPECT_EQ(page.lightColor().mode, 6);
    EXPECT_EQ(page.statusImageName(), "color_open");
    EXPECT_TRUE(page.onButton()->isChecked());
    const int sent = desk->lightCommandsReceived();
    advance(500ms);
    EXPECT_EQ(desk->lightCommandsReceived(), sent); // following sends nothing back

    goBack();
    control->lightStripButton()->click();
    EXPECT_EQ(top<ColorManageView>()->lightColor().mode, 6);
}

} // namespace
} // namespace ostrel::test
