// Moves to a height on a virtual desk in virtual time: by the desk's own target command and,
// on a desk that ignores it, by held keys released ahead of the target.
#include "session/GoToHeight.h"

#include "SessionTestSupport.h"
#include "session/GoToHeightSheet.h"
#include "widgets/HomeFunctionBtn.h"

#include <QLabel>
#include <QTest>
#include <cstdio>

namespace ostrel::test {
namespace {

using Ending = GoToHeight::Ending;

class GoToHeightTest : public SessionTest {
protected:
    DeskSession& openOn(VirtualDeskConfig config) {
        desk = &bindDesk(std::move(config));
        openControl();
        QObject::connect(&session().goToHeight(), &GoToHeight::finished, control.get(),
                         [this](Ending ending) { endings.push_back(ending); });
        return session();
    }

    // Runs virtual time until the move ends, then lets the desk come to rest.
    std::optional<Ending> runMove(std::chrono::milliseconds limit = 60s) {
        const std::size_t before = endings.size();
        for (auto waited = 0ms; endings.size() == before && waited < limit; waited += 50ms)
            advance(50ms);
        advance(1s);
        return endings.size() > before ? std::optional(endings.back()) : std::nullopt;
    }

    int errorTo(int target) const { return std::abs(desk->heightTenths() - target); }

    VirtualDesk* desk = nullptr;
    std::vector<Ending> endings;
};

// Both ways of moving: false = the desk follows the target command, true = it ignores it.
class GoToHeightPathTest : public GoToHeightTest, public ::testing::WithParamInterface<bool> {
protected:
    DeskSession& open(bool inches = false) {
        return openOn({.inchDisplay = inches, .ignoresTargetHeight = GetParam()});
    }
    const char* pathName() const { return GetParam() ? "held keys" : "target command"; }
};

TEST_P(GoToHeightPathTest, ArrivesWithinHalfACentimetreUpAndDown) {
    DeskSession& s = open();
    // Across the display's switch to whole centimetres, down into tenths, up to the top.
    for (const int target : {1104, 655, 987, 1200, 1013}) {
        ASSERT_EQ(s.moveTo(target), GoToHeight::Refusal::None);
        EXPECT_EQ(runMove(), Ending::Arrived) << target;
        EXPECT_LE(errorTo(target), GoToHeight::kToleranceTenthsCm) << target;
        EXPECT_FALSE(desk->isMoving());
        EXPECT_EQ(handle().currentCommandType(), command::kNoKey);
        std::printf("%s: target %d, stopped at %d (error %d tenths of a cm)\n", pathName(), target,
                    desk->heightTenths(), desk->heightTenths() - target);
    }
    // Only the fallback presses keys.
    EXPECT_EQ(desk->keyFramesReceived() > 0, GetParam());
}

TEST_P(GoToHeightPathTest, ADeskInInchesIsDrivenInItsOwnUnit) {
    DeskSession& s = open(true);
    ASSERT_EQ(s.moveTo(1016), GoToHeight::Refusal::None); // 40.0 in
    EXPECT_EQ(runMove(), Ending::Arrived);
    EXPECT_LE(errorTo(1016), GoToHeight::kToleranceTenthsCm);
}

INSTANTIATE_TEST_SUITE_P(BothPaths, GoToHeightPathTest, ::testing::Bool());

TEST_P(GoToHeightPathTest, QuittingEndsTheMove) {
    DeskSession& s = open();
    ASSERT_EQ(s.moveTo(1150), GoToHeight::Refusal::None);
    advance(1s);
    ASSERT_TRUE(QMetaObject::invokeMethod(qApp, "aboutToQuit"));
    EXPECT_EQ(endings, std::vector{Ending::Aborted});
    advance(200ms);
    EXPECT_EQ(handle().currentCommandType(), command::kNoKey);
    EXPECT_FALSE(desk->isMoving()); // the link is still up: even the desk's own move stops
}

TEST_F(GoToHeightTest, TheFallbackLearnsHowFarTheDeskCoasts) {
    // Polled half as often, it coasts twice as far as the default.
    DeskSession& s = openOn({.pollPeriod = 100ms, .ignoresTargetHeight = true});
    ASSERT_EQ(s.moveTo(900), GoToHeight::Refusal::None);
    ASSERT_EQ(runMove(), Ending::Arrived);
    ASSERT_TRUE(s.goToHeight().learnedOvershoot().has_value());
    EXPECT_NEAR(*s.goToHeight().learnedOvershoot(), 3.8, 1.0); // tenths per 100 ms poll
    ASSERT_EQ(s.moveTo(700), GoToHeight::Refusal::None);
    EXPECT_EQ(runMove(), Ending::Arrived);
    EXPECT_LE(errorTo(700), GoToHeight::kToleranceTenthsCm);
}

TEST_F(GoToHeightTest, ADeskThatDoesNotMoveEndsItAfterASecondOfKeys) {
    DeskSession& s = openOn({.speedCmPerSecond = 0.0});
    const auto startedAt = now();
    ASSERT_EQ(s.moveTo(1000), GoToHeight::Refusal::None);
    EXPECT_EQ(runMove(5s), Ending::Stalled);
    // One second for the target command, one for the held key.
    EXPECT_GT(desk->keyFramesReceived(), 0);
    EXPECT_EQ(handle().currentCommandType(), command::kNoKey);
    EXPECT_LE(now() - startedAt, 2s + 50ms + 1s);
}

TEST_F(GoToHeightTest, ASlowDeskIsStoppedAfterTheFullTravelTime) {
    // Still changes its tenths every third of a second.
    DeskSession& s = openOn({.speedCmPerSecond = 0.3});
    const auto startedAt = now();
    ASSERT_EQ(s.moveTo(1200), GoToHeight::Refusal::None);
    EXPECT_EQ(runMove(), Ending::TimedOut);
    const auto limit =
        std::chrono::milliseconds(int(600 / GoToHeight::kSlowestTenthsCmPerSecond * 1000)) +
        GoToHeight::kTravelMargin;
    EXPECT_NEAR(double((now() - startedAt - 1s).count()), double(limit.count()), 60.0);
    EXPECT_FALSE(desk->isMoving());
    EXPECT_EQ(handle().currentCommandType(), command::kNoKey);
}

// Targets beyond the limits are refused where they come in: DeskBusTest, the height sheet below.
TEST_F(GoToHeightTest, ATargetBeforeAnyHeightIsRefusedAndOneAtTheCurrentHeightArrivesAtOnce) {
    DeskSession& s = openOn({});
    GoToHeight fresh;
    EXPECT_EQ(fresh.start(900, 0, s.limits()), GoToHeight::Refusal::HeightUnknown);
    ASSERT_EQ(s.moveTo(722), GoToHeight::Refusal::None);
    EXPECT_EQ(endings, std::vector{Ending::Arrived});
    advance(500ms);
    EXPECT_EQ(desk->heightTenths(), VirtualDeskConfig{}.startHeight);
    EXPECT_EQ(handle().currentCommandType(), command::kNoKey);
}

TEST_F(GoToHeightTest, ClickingTheHeightAsksInTheShownUnitAndMovesThere) {
    openOn({});
    std::vector<GoToHeightSheet::Question> asked;
    std::optional<double> answer;
    GoToHeightSheet::setPresenter([&](const GoToHeightSheet::Question& question) {
        asked.push_back(question);
        return answer;
    });

    answer = 100.0;
    QTest::mouseClick(control->heightLabel(), Qt::LeftButton);
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(std::tuple(asked[0].unit, asked[0].minimum, asked[0].maximum, asked[0].current),
              std::tuple(QString("cm"), 60.0, 120.0, 72.0));
    EXPECT_EQ(runMove(), Ending::Arrived);

    setUnit("1");
    answer = 30.0; // inches
    QTest::mouseClick(control->heightLabel(), Qt::LeftButton);
    EXPECT_EQ(asked.back().unit, QStringLiteral("in"));
    EXPECT_NEAR(asked.back().maximum, 47.2, 0.05);
    EXPECT_EQ(runMove(), Ending::Arrived);
    EXPECT_LE(errorTo(762), GoToHeight::kToleranceTenthsCm);

    answer = 50.0; // beyond the top: refused, said, and nothing moves
    QTest::mouseClick(control->heightLabel(), Qt::LeftButton);
    EXPECT_EQ(toast(), QStringLiteral("The desk moves between 23.6in and 47.2in."));
    EXPECT_FALSE(session().goToHeight().isMoving());

    answer.reset(); // Cancel
    const std::size_t before = endings.size();
    QTest::mouseClick(control->heightLabel(), Qt::LeftButton);
    advance(1s);
    EXPECT_EQ(endings.size(), before);
    EXPECT_FALSE(desk->isMoving());
    GoToHeightSheet::setPresenter(nullptr);
}

} // namespace
} // namespace ostrel::test
