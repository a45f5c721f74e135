#include "widgets/OMHoverButton.h"

#include "WidgetTestSupport.h"

#include <memory>
#include <string>
#include <vector>

using ostrel::OMHoverButton;
using ostrel::test::sendMouse;

namespace {

struct Step {
    long long at;
    QEvent::Type type;
};

struct TimingCase {
    const char* name;
    std::vector<Step> input;
    std::vector<std::string> expected; // "signal@ms"
};

class OMHoverButtonTest : public ostrel::test::VirtualTimeTest,
                          public ::testing::WithParamInterface<TimingCase> {
protected:
    OMHoverButtonTest() {
        auto record = [this](const char* name) {
            return [this, name](OMHoverButton* sender) {
                EXPECT_EQ(sender, button.get());
                log.push_back(std::string(name) + "@" + std::to_string(clock.now().count()));
            };
        };
        QObject::connect(button.get(), &OMHoverButton::touchHoverDwon, record("down"));
        QObject::connect(button.get(), &OMHoverButton::touchHoverUp, record("up"));
        QObject::connect(button.get(), &OMHoverButton::longHoverPress, record("long"));
        QObject::connect(button.get(), &OMHoverButton::longHoverPressEnd, record("longEnd"));
        QObject::connect(button.get(), &OMHoverButton::hoverStart, record("enter"));
        QObject::connect(button.get(), &OMHoverButton::hoverEnd, record("exit"));
        button->resize(56, 56);
    }

    std::unique_ptr<OMHoverButton> button = std::make_unique<OMHoverButton>("control_sit_set");
    std::vector<std::string> log;
};

constexpr auto Press = QEvent::MouseButtonPress;
constexpr auto Release = QEvent::MouseButtonRelease;

TEST_P(OMHoverButtonTest, ReportsPressesAtTheirDelays) {
    for (const Step& step : GetParam().input) {
        at(step.at);
        sendMouse(button.get(), step.type);
    }
    at(10'000);
    EXPECT_EQ(log, GetParam().expected);
    EXPECT_FALSE(button->isLongPress());
}

INSTANTIATE_TEST_SUITE_P(
    Matrix, OMHoverButtonTest,
    ::testing::Values(TimingCase{"ShortClickIsShiftedBy700ms",
                                 {{0, Press}, {300, Release}},
                                 {"down@700", "up@1000"}},
                      TimingCase{"ReleaseJustBeforeTheLongPressCheck",
                                 {{0, Press}, {499, Release}},
                                 {"down@700", "up@1199"}},
                      TimingCase{"LongPressReplacesThePress",
                                 {{0, Press}, {1500, Release}},
                                 {"long@500", "longEnd@2200"}},
                      TimingCase{"ReleaseBetweenCheckAndReportIsStillLong",
                                 {{0, Press}, {600, Release}},
                                 {"long@500", "longEnd@1300"}},
                      TimingCase{"ReleaseAfterTheSkippedReportIsLong",
                                 {{0, Press}, {800, Release}},
                                 {"long@500", "longEnd@1500"}},
                      TimingCase{"TwoQuickClicksInterleave",
                                 {{0, Press}, {100, Release}, {200, Press}, {300, Release}},
                                 {"down@700", "up@800", "down@900", "up@1000"}}),
    [](const ::testing::TestParamInfo<TimingCase>& tested) {
        return std::string(tested.param.name);
    });

TEST_F(OMHoverButtonTest, HoverIsReportedAtOnceAndOtherButtonsDoNothing) {
    ostrel::test::hover(button.get(), true);
    sendMouse(button.get(), Press, Qt::RightButton);
    sendMouse(button.get(), Release, Qt::RightButton);
    ostrel::test::hover(button.get(), false);
    sendMouse(button.get(), Press);
    button.reset(); // a screen closed mid-press: its pending reports must die with the button
    at(5000);
    EXPECT_EQ(log, (std::vector<std::string>{"enter@0", "exit@0"}));
}

} // namespace
