// What takes a held button's release away. Offscreen, Qt delivers the events (a popup shown,
// a window blocked or hidden) but not the input grabs behind them, so these tests check that
// the buttons react to the events; the grabs themselves are tested under X11 with real input.
#include "WidgetTestSupport.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMHoverButton.h"

#include <QDialog>
#include <QMenu>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <functional>

using namespace ostrel;

namespace {

struct Interruption {
    const char* name;
    std::function<void(QWidget& window, QWidget& button)> happen;
};

const Interruption kInterruptions[] = {
    {"PopupMenu",
     [](QWidget& window, QWidget&) {
         auto* menu = new QMenu(&window);
         menu->addAction(QStringLiteral("Hide"));
         menu->popup(window.mapToGlobal(QPoint(10, 10)));
     }},
    {"ModalSheet",
     [](QWidget& window, QWidget&) {
         auto* sheet = new QDialog(&window);
         sheet->setWindowModality(Qt::WindowModal);
         sheet->show();
     }},
    {"WindowHidden", [](QWidget& window, QWidget&) { window.hide(); }},
    {"WindowMinimised", [](QWidget& window, QWidget&) { window.showMinimized(); }},
    {"ButtonHidden", [](QWidget&, QWidget& button) { button.hide(); }},
    {"ButtonDisabled", [](QWidget&, QWidget& button) { button.setEnabled(false); }},
};

class HoldGuardTest : public test::VirtualTimeTest,
                      public ::testing::WithParamInterface<Interruption> {
protected:
    template <class Button> Button* addButton() {
        auto* button = new Button(QStringLiteral("control_up"), &window);
        button->setFixedSize(56, 56);
        window.layout()->addWidget(button);
        window.show();
        return button;
    }

    HoldGuardTest() { new QVBoxLayout(&window); }

    QWidget window;
};

TEST_P(HoldGuardTest, HoldButtonLetsGoAtOnceAndIgnoresTheStaleRelease) {
    auto* up = addButton<HomeFunctionBtn>();
    QSignalSpy released(up, &HomeFunctionBtn::touchUp);
    test::sendMouse(up, QEvent::MouseButtonPress);
    ASSERT_EQ(released.count(), 0);

    GetParam().happen(window, *up);
    EXPECT_EQ(released.count(), 1);
    EXPECT_FALSE(up->isDown());

    // The release Qt may still deliver later belongs to no hold.
    test::sendMouse(up, QEvent::MouseButtonRelease);
    EXPECT_EQ(released.count(), 1);
}

TEST_P(HoldGuardTest, PresetButtonEndsAReportedPressAtOnce) {
    auto* preset = addButton<OMHoverButton>();
    QSignalSpy pressed(preset, &OMHoverButton::touchHoverDwon);
    QSignalSpy released(preset, &OMHoverButton::touchHoverUp);
    test::sendMouse(preset, QEvent::MouseButtonPress);
    at(300);
    test::sendMouse(preset, QEvent::MouseButtonRelease);
    at(800); // pressed at 700, its timed release due at 1000
    ASSERT_EQ(pressed.count(), 1);

    GetParam().happen(window, *preset);
    EXPECT_EQ(released.count(), 1) << "released now, not at 1000";
    at(2000);
    EXPECT_EQ(released.count(), 1) << "and not a second time";
}

INSTANTIATE_TEST_SUITE_P(Events, HoldGuardTest, ::testing::ValuesIn(kInterruptions),
                         [](const ::testing::TestParamInfo<Interruption>& tested) {
                             return std::string(tested.param.name);
                         });

using PresetButtonGuardTest = HoldGuardTest;

// The first click's release is reported while the second press is held: that press is still
// guarded.
TEST_F(PresetButtonGuardTest, APressHeldWhenTheClickBeforeItEndsStaysGuarded) {
    auto* preset = addButton<OMHoverButton>();
    QSignalSpy longPressed(preset, &OMHoverButton::longHoverPress);
    test::sendMouse(preset, QEvent::MouseButtonPress);
    at(100);
    test::sendMouse(preset, QEvent::MouseButtonRelease); // reported at 800
    at(400);
    test::sendMouse(preset, QEvent::MouseButtonPress); // long from 900
    at(850);
    window.hide();
    at(3000);
    EXPECT_FALSE(preset->isDown());
    EXPECT_EQ(longPressed.count(), 0);
}

TEST_F(PresetButtonGuardTest, APressNotYetReportedIsDroppedWithoutAKey) {
    auto* preset = addButton<OMHoverButton>();
    QSignalSpy pressed(preset, &OMHoverButton::touchHoverDwon);
    QSignalSpy released(preset, &OMHoverButton::touchHoverUp);
    test::sendMouse(preset, QEvent::MouseButtonPress);
    at(300);
    window.hide();
    at(400);
    test::sendMouse(preset, QEvent::MouseButtonRelease); // belongs to the dropped press
    at(3000);
    EXPECT_EQ(pressed.count(), 0);
    EXPECT_EQ(released.count(), 0);
}

} // namespace
