#include "BluezTestSupport.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <algorithm>
#include <utility>
#include <vector>

namespace ostrel::test {
namespace {

constexpr int kNoKey = 0;
constexpr int kUpKey = 1;
constexpr int kDownKey = 2;
constexpr int kUnansweredKey = 15; // outside the answer table: polls go unanswered

struct MoveCase {
    const char* name;
    const char* label;
    int type; // GATT layout
    int key;
    int direction;
    bool sockets; // BlueZ offers AcquireNotify/AcquireWrite
};

const QVariantMap kBothSocketsHeld{{QStringLiteral("NotifyAcquired"), true},
                                   {QStringLiteral("WriteAcquired"), true}};

bool anyNotifying(const PeripheralPtr& peripheral) {
    for (const ServicePtr& service : peripheral->serviceArray())
        for (const CharacteristicPtr& characteristic : service->characteristicArray())
            if (characteristic->isNotifying())
                return true;
    return false;
}

class BluezMoveTest : public BluezTest, public ::testing::WithParamInterface<MoveCase> {};

TEST_P(BluezMoveTest, HeldKeyMovesTheDeskAndHeightsComeBackUntilReleased) {
    const MoveCase c = GetParam();
    const QString name = QString::fromLatin1(c.name);
    offerSockets(c.sockets);
    addDesk(name, c.type, {{QStringLiteral("startHeight"), 900}});
    connectDesk(discover(name));
    ASSERT_TRUE(waitFor([&] { return !heights.empty(); }));
    EXPECT_EQ(connectReports, (std::vector<std::optional<int>>{std::nullopt}));
    EXPECT_EQ(heights.front(), 900);
    // Frames take the sockets whenever BlueZ offers them.
    EXPECT_EQ(acquiredState(name), c.sockets ? kBothSocketsHeld : QVariantMap());
    EXPECT_TRUE(anyNotifying(facade().currentPeripheral())) << "subscribed, yet not told so";

    handle().setCurrentCommandType(c.key);
    ASSERT_TRUE(waitFor([&] { return (heights.back() - 900) * c.direction >= 20; }));
    EXPECT_GE((deskHeight(name) - 900) * c.direction, 20);

    handle().setCurrentCommandType(kNoKey);
    // One frame per poll reaches the session (the display; the link answers the poll itself):
    // the next poll's answer stops the desk, and it then holds still for twenty more.
    const int released = frames;
    ASSERT_TRUE(waitFor([&] { return frames >= released + 2; }));
    const int stopped = deskHeight(name);
    ASSERT_TRUE(waitFor([&] { return frames >= released + 22; }));
    EXPECT_EQ(deskHeight(name), stopped);
    EXPECT_EQ(heights.back(), stopped);
}

// Type 1 shares one characteristic for both sockets; type 2 over sockets is the tests' below.
INSTANTIATE_TEST_SUITE_P(
    BothLayoutsBothPaths, BluezMoveTest,
    ::testing::Values(MoveCase{"Ostrel-CN-2102", "DownOnType1", 1, kDownKey, -1, true},
                      MoveCase{"QWJ-2103", "UpOnType2OverWriteValue", 2, kUpKey, +1, false}),
    [](const auto& testParam) { return testParam.param.label; });

enum class LinkEnd { DeskDrops, DeskLeavesReach, HostLetsGo };

struct DropCase {
    const char* name;
    const char* label;
    LinkEnd end;
    bool autoReconnect;
    int code;
};

class BluezDropTest : public BluezTest, public ::testing::WithParamInterface<DropCase> {};

TEST_P(BluezDropTest, LostLinkIsReportedOnTheConnectCallback) {
    const DropCase c = GetParam();
    const QString name = QString::fromLatin1(c.name);
    addDesk(name, 2);
    facade().setAutoConnectAfterDisconnect(c.autoReconnect);
    connectDesk(discover(name));
    ASSERT_TRUE(waitFor([&] { return frames > 0; }));

    if (c.end == LinkEnd::DeskLeavesReach)
        control(QStringLiteral("SetInRange"), {name, false});
    else if (c.end == LinkEnd::DeskDrops)
        control(QStringLiteral("DropLink"), {name});
    else // as a switch to another desk does
        facade().disconnectWithPeripheral(facade().currentPeripheral());
    ASSERT_TRUE(waitFor([&] { return connectReports.size() >= 2; }));
    EXPECT_EQ(connectReports[1], c.code);
    if (!c.autoReconnect) {
        EXPECT_FALSE(facade().isConnect());
        return;
    }
    // A desk out of reach keeps the new attempt waiting until it is back.
    if (c.end == LinkEnd::DeskLeavesReach) {
        EXPECT_EQ(connectReports.size(), 2u);
        control(QStringLiteral("SetInRange"), {name, true});
    }
    // Reconnected by itself, subscribed again, and the poll answers reach the desk again.
    ASSERT_TRUE(waitFor([&] { return connectReports.size() >= 3; }));
    EXPECT_EQ(connectReports[2], std::nullopt);
    const int start = deskHeight(name);
    handle().setCurrentCommandType(kUpKey);
    ASSERT_TRUE(waitFor([&] { return deskHeight(name) > start; }));
    EXPECT_EQ(connectReports.size(), 3u);
}

INSTANTIATE_TEST_SUITE_P(
    AutoReconnect, BluezDropTest,
    ::testing::Values(DropCase{"QWJ-2201", "LetGoStaysDown", LinkEnd::HostLetsGo, false, 5},
                      DropCase{"QWJ-2202", "DroppedComesBack", LinkEnd::DeskDrops, true, 6},
                      DropCase{"QWJ-2203", "LeftReachComesBack", LinkEnd::DeskLeavesReach, true,
                               6}),
    [](const auto& testParam) { return testParam.param.label; });

class BluezWriteErrorTest : public BluezTest, public ::testing::WithParamInterface<bool> {};

// A write without response reports nothing on success. BlueZ's refusal (an error reply to
// WriteValue, or a socket that has filled up) must reach the writer's callback as code 9, and
// each write gets one report; once BlueZ takes writes again, the desk answers to them again.
TEST_P(BluezWriteErrorTest, RefusedWriteSurfacesAsCodeNineAndWritesResumeAfterwards) {
    const QString name = GetParam() ? QStringLiteral("QWJ-2301") : QStringLiteral("QWJ-2302");
    offerSockets(GetParam());
    addDesk(name, 2);
    connectDesk(discover(name));
    ASSERT_TRUE(waitFor([&] { return frames > 0; }));

    // Leave polls unanswered, so that the only write the stand-in refuses is this test's.
    handle().setCurrentCommandType(kUnansweredKey);
    control(QStringLiteral("SetWriteError"), {name, true});
    // A socket holds a few hundred packets before it fills up, so the writes go in rounds that
    // a stack taking writes would have drained. BlueZ refuses WriteValue at once.
    constexpr std::size_t kRound = 200;
    auto codes = std::make_shared<std::vector<int>>();
    for (int round = 0; round < 5 && std::count(codes->begin(), codes->end(), 9) == 0; ++round) {
        const std::size_t expected = codes->size() + kRound;
        for (std::size_t i = 0; i < kRound; ++i)
            facade().writeDataWithCurrentperipheral(
                Bytes{0x9B, 0x04, 0x02, 0x00, 0x9D},
                [codes](const CharacteristicPtr&, const OptionalError& error) {
                    codes->push_back(error ? error->code : 0);
                });
        ASSERT_TRUE(waitFor([&] { return codes->size() == expected; }));
    }
    EXPECT_TRUE(std::ranges::all_of(*codes, [](int code) { return code == 0 || code == 9; }));
    EXPECT_GE(std::ranges::count(*codes, 9), 1);

    control(QStringLiteral("SetWriteError"), {name, false});
    const int start = deskHeight(name);
    handle().setCurrentCommandType(kUpKey);
    ASSERT_TRUE(waitFor([&] { return deskHeight(name) > start; }));
    EXPECT_EQ(connectReports.size(), 1u); // the link stayed up throughout
}

INSTANTIATE_TEST_SUITE_P(BothPaths, BluezWriteErrorTest, ::testing::Bool(),
                         [](const auto& testParam) {
                             return testParam.param ? "OverTheSocket" : "OverWriteValue";
                         });

// BlueZ hangs the sockets up when the link ends, whether or not the bus has said so yet: that
// is a lost link, and the reconnection acquires fresh sockets.
TEST_F(BluezTest, SocketHangUpIsALostLinkAndTheNextLinkAcquiresAgain) {
    const QString name = QStringLiteral("QWJ-2401");
    addDesk(name, 2);
    facade().setAutoConnectAfterDisconnect(true);
    connectDesk(discover(name));
    ASSERT_TRUE(waitFor([&] { return frames > 0; }));

    control(QStringLiteral("HangUpSockets"), {name});
    ASSERT_TRUE(waitFor([&] { return connectReports.size() >= 3; }));
    EXPECT_EQ(connectReports[1], 6);
    EXPECT_EQ(connectReports[2], std::nullopt);
    ASSERT_TRUE(waitFor([&] { return acquiredState(name) == kBothSocketsHeld; }));
    const int start = deskHeight(name);
    handle().setCurrentCommandType(kUpKey);
    ASSERT_TRUE(waitFor([&] { return deskHeight(name) > start; }));
}

// Polls over BlueZ's sockets are answered on a thread of their own: a main thread that takes no
// events for a moment (here, one making blocking calls) delays no answer. One that stays stuck
// holds a stale key: the desk is stopped until the main thread catches up.
TEST_F(BluezTest, HeldKeyOutlivesABusyMainThreadButNotAStuckOne) {
    const QString name = QStringLiteral("QWJ-2501");
    addDesk(name, 2, {{QStringLiteral("startHeight"), 900}});
    connectDesk(discover(name));
    ASSERT_TRUE(waitFor([&] { return frames > 0; }));

    handle().setCurrentCommandType(kUpKey);
    const QDeadlineTimer deadline(kWaitMs);
    QElapsedTimer still;
    int height = 900;
    for (still.start(); still.elapsed() < 400 && !deadline.hasExpired();)
        if (const int now = deskHeight(name); now != std::exchange(height, now))
            still.start();
    EXPECT_GT(height, 900);
    EXPECT_FALSE(deadline.hasExpired()) << "the desk never stopped";
    ASSERT_TRUE(waitFor([&] { return deskHeight(name) > height; }));
    handle().setCurrentCommandType(kNoKey);
}

} // namespace
} // namespace ostrel::test
