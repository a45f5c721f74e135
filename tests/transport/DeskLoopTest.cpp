#include "TransportTestSupport.h"

namespace ostrel::test {
namespace {

// The whole loop as the desk session wires it: facade, classifier and a virtual desk.
class DeskLoopTest : public TransportTest {
protected:
    void SetUp() override {
        TransportTest::SetUp();
        handle().bluetoothResultHandle_HeightChange = [this](int height) {
            heights.push_back(height);
        };
        desk = &addDesk();
        peripheral = connect(*desk, [](const std::optional<Bytes>& frame, const OptionalError&) {
            if (frame)
                BluetoothResultHandle::sharedInstance().handleTableData(*frame);
        });
        advance(200ms);
    }

    VirtualDesk* desk = nullptr;
    PeripheralPtr peripheral;
    std::vector<int> heights;
};

TEST_F(DeskLoopTest, HeldUpKeyRaisesTheDeskAndDisplayFramesReportIt) {
    ASSERT_FALSE(heights.empty());
    EXPECT_EQ(heights.back(), 720);
    handle().setCurrentCommandType(1);
    advance(2s);
    EXPECT_TRUE(desk->isMoving());
    EXPECT_NEAR(desk->heightTenths(), 720 + 76, 4); // 3.8 cm/s
    EXPECT_NEAR(heights.back(), desk->heightTenths(), 2);

    handle().setCurrentCommandType(0);
    advance(desk->config().pollPeriod + 1ms); // the next poll gets the no-key answer
    EXPECT_FALSE(desk->isMoving());
    const int stoppedAt = desk->heightTenths();
    advance(1s);
    EXPECT_EQ(desk->heightTenths(), stoppedAt);
    EXPECT_EQ(heights.back(), stoppedAt);
}

TEST_F(DeskLoopTest, DownKeyLowersTheDeskToItsLimit) {
    handle().setCurrentCommandType(2);
    advance(5s);
    EXPECT_EQ(desk->heightTenths(), desk->config().minHeight);
    EXPECT_EQ(heights.back(), desk->config().minHeight);
}

// A host that stops answering (a crashed app, a frozen link) must not keep the desk moving.
TEST_F(DeskLoopTest, UnansweredPollsStopTheDesk) {
    handle().setCurrentCommandType(1);
    advance(500ms);
    ASSERT_TRUE(desk->isMoving());
    handle().setWriter(nullptr); // the host goes silent, the key still "held"
    advance(3 * desk->config().pollPeriod);
    EXPECT_FALSE(desk->isMoving());
}

// A link lost with a key held must not bring the desk back moving on its own.
TEST_F(DeskLoopTest, LostLinkReleasesTheHeldKey) {
    handle().setCurrentCommandType(1);
    advance(500ms);
    desk->dropLink(); // auto-reconnect is on: the link comes back
    EXPECT_EQ(handle().currentCommandType(), 0);
    advance(1s);
    ASSERT_TRUE(facade().isConnect());
    ASSERT_TRUE(desk->isSubscribed());
    EXPECT_FALSE(desk->isMoving());

    handle().setCurrentCommandType(4); // an information request survives teardown
    facade().disconnectAllPeripheral();
    EXPECT_EQ(handle().currentCommandType(), 4);
}

} // namespace
} // namespace ostrel::test
