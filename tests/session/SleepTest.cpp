// Sleep and wake on a virtual desk in virtual time, with the system's sleep stood in for at its
// interface: every movement ends and the desk hears no key, the link goes, and only then is the
// system let go; no alert, the session stays; after wake the desk is linked with nothing held.
// Releasing the desk for another device lets go of it the same way, and nothing links it again
// until the user connects it.
#include "SessionTestSupport.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "platform/Platform.h"
#include "platform/SystemSleep.h"
#include "session/DeskReleaseRow.h"
#include "session/PlannedDisconnect.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/WidgetTestSupport.h"

#include <QPushButton>
#include <QSignalSpy>
#include <functional>
#include <optional>

namespace ostrel::test {
namespace {

// Grants its lock unless told to refuse; records what the desk had heard when it was let go.
class SleepStandin : public SystemSleep {
public:
    void holdOff() override {
        ++asked;
        m_held = granting;
    }
    void letGo() override {
        if (m_held && onLetGo)
            onLetGo();
        m_held = false;
    }
    bool isHeld() const override { return m_held; }

    bool granting = true;
    int asked = 0;
    std::function<void()> onLetGo;

private:
    bool m_held = false;
};

struct SleepCase {
    const char* name;
    std::function<void(DeskControlVC&)> moving; // what moves the desk when sleep comes
    bool granting;
};

class SleepTest : public SessionTest, public ::testing::WithParamInterface<SleepCase> {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        desk = &bindDesk({}, "70,110,0,0");
        openControl();
        system.onLetGo = [this] {
            letGoWithLink = desk->isSubscribed();
            letGoWhileMoving = desk->isMoving();
            letGoAfterNoKey = !desk->keyFrames().empty() && desk->keyFrames().back().keys == 0;
        };
    }

    SleepStandin system;
    PlatformOverride<SystemSleep> sleepOverride{system};
    VirtualDesk* desk = nullptr;
    std::optional<bool> letGoWithLink;
    bool letGoWhileMoving = false;
    bool letGoAfterNoKey = false;
};

TEST_P(SleepTest, LetsGoOfTheDeskBeforeTheSystemAndLinksItAgainAfterWake) {
    system.granting = GetParam().granting;
    ASSERT_EQ(system.asked, 1) << "no lock asked for while linked";
    GetParam().moving(*control);
    advance(500ms);
    ASSERT_TRUE(desk->isMoving());

    emit system.coming();
    advance(3s);
    EXPECT_FALSE(desk->isSubscribed());
    EXPECT_FALSE(desk->isMoving());
    if (GetParam().granting) {
        ASSERT_TRUE(letGoWithLink.has_value()) << "the system was never let go";
        EXPECT_FALSE(*letGoWithLink) << "let go before the link went";
        EXPECT_FALSE(letGoWhileMoving);
        EXPECT_TRUE(letGoAfterNoKey) << "the desk's last answer held a key";
    }

    emit system.resumed();
    advance(5s);
    EXPECT_TRUE(desk->isSubscribed());
    EXPECT_EQ(system.asked, 2) << "the lock is asked for again after wake";
    const int height = desk->heightTenths();
    advance(2s);
    EXPECT_FALSE(desk->isMoving()) << "a movement resumed after wake";
    EXPECT_EQ(desk->heightTenths(), height);
    EXPECT_TRUE(alerts.empty()) << "a planned disconnect raised an alert";
    EXPECT_EQ(DeskSession::commandType(), command::kNoKey);
}

INSTANTIATE_TEST_SUITE_P(
    Movements, SleepTest,
    ::testing::Values(
        SleepCase{"UpHeld", [](DeskControlVC& c) { press(c.upButton()); }, true},
        SleepCase{"GoToHeight", [](DeskControlVC& c) { c.session().moveTo(1100); }, true},
        SleepCase{"LockRefused", [](DeskControlVC& c) { press(c.downButton()); }, false}),
    [](const ::testing::TestParamInfo<SleepCase>& row) { return std::string(row.param.name); });

// Woken away from the desk: the session's scan goes on looking, without an alert.
TEST_F(SleepTest, WakeOutOfRangeKeepsLookingWithoutAnAlert) {
    emit system.coming();
    advance(3s);
    desk->setInRange(false);
    emit system.resumed();
    advance(65s);
    EXPECT_FALSE(desk->isSubscribed());
    EXPECT_TRUE(alerts.empty());
    desk->setInRange(true);
    advance(35s);
    EXPECT_TRUE(desk->isSubscribed());
}

// Released with Up held: the desk's last answer is no key, the link goes without an alert, and
// neither a write that finds no link nor sleep and wake links it again; Connect desk does.
TEST_F(SleepTest, AReleasedDeskStaysLetGoUntilTheUserConnectsIt) {
    QPushButton* action = control->releaseRow()->button();
    QSignalSpy links(&session().link(), &DeskLink::linked);
    press(control->upButton());
    advance(500ms);
    action->click();
    advance(PlannedDisconnect::kDisconnectLimit);
    EXPECT_FALSE(desk->isSubscribed());
    EXPECT_FALSE(desk->isMoving());
    EXPECT_EQ(desk->keyFrames().back().keys, 0) << "the link went while a key was held";
    EXPECT_EQ(action->text(), QStringLiteral("Connect desk"));
    EXPECT_FALSE(control->upButton()->isEnabled());

    NotificationCenter::defaultCenter().post(QLatin1String(notifications::kReconnect));
    emit system.coming();
    emit system.resumed();
    advance(2min);
    EXPECT_EQ(links.count(), 0) << "linked again while released";
    EXPECT_EQ(system.asked, 1) << "a lock taken for a desk let go of";

    action->click();
    advance(20s);
    EXPECT_EQ(links.count(), 1);
    EXPECT_TRUE(session().isConnected());
    EXPECT_TRUE(alerts.empty()) << "a planned disconnect raised an alert";
}

} // namespace
} // namespace ostrel::test
