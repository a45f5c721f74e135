#include "ProtocolTestSupport.h"
#include "TransportTestSupport.h"
#include "core/NotificationNames.h"

namespace ostrel::test {
namespace {

class WriteTest : public TransportTest {
protected:
    struct Sent {
        std::chrono::milliseconds at;
        std::size_t size;
        bool operator==(const Sent&) const = default;
    };
    void SetUp() override {
        TransportTest::SetUp();
        central->setWriteObserver([this](const GattPath&, const Bytes& value) {
            sent.push_back({now(), value.size()});
        });
        facade().bluetoothStateChanged(
            [this](const PeripheralPtr&, int state) { writtenReports += state == 8 ? 1 : 0; });
    }
    std::vector<Sent> sent;
    int writtenReports = 0; // state 8: a write completed
};

TEST_F(WriteTest, LongWriteGoesOutInTwentyBytePiecesFifthOfASecondApart) {
    VirtualDesk& desk = addDesk();
    connect(desk, [](const std::optional<Bytes>&, const OptionalError&) {}); // GATT now known
    desk.setSubscribed(false); // no polls, so no answers among the pieces
    sent.clear();
    int completions = 0;
    const auto start = now();
    facade().writeDataWithCurrentperipheral(Bytes(45, 0x00),
                                            [&](const CharacteristicPtr&, const OptionalError& e) {
                                                EXPECT_FALSE(e);
                                                ++completions;
                                            });
    EXPECT_EQ(sent.size(), 1u); // at once: no radio round trip once the GATT is known
    advance(1s);
    EXPECT_EQ(sent, (std::vector<Sent>{{start, 20}, {start + 200ms, 20}, {start + 400ms, 5}}));
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(writtenReports, 1); // one completion for the whole write
}

// The radio may refuse a write without response after its bytes have left: the writer hears
// that refusal alone, and a write nobody refuses reports "written" alone.
TEST_F(WriteTest, EachWriteReportsExactlyOnce) {
    VirtualDesk& desk = addDesk();
    connect(desk); // not subscribed: no poll answers share the characteristic
    std::vector<OptionalError> reports;
    auto record = [&](const CharacteristicPtr&, const OptionalError& e) { reports.push_back(e); };
    central->setWriteRefusal(&desk, QStringLiteral("Write not permitted"));
    facade().writeDataWithCurrentperipheral(Bytes{0x01}, record);
    advance(2s);
    EXPECT_EQ(reports, (std::vector<OptionalError>{BluetoothError{9, "Write not permitted"}}));
    EXPECT_EQ(writtenReports, 0);

    central->setWriteRefusal(&desk, {});
    reports.clear();
    facade().writeDataWithCurrentperipheral(Bytes{0x01}, record);
    advance(2s);
    EXPECT_EQ(reports, std::vector<OptionalError>{std::nullopt});
    EXPECT_EQ(writtenReports, 1);
}

TEST_F(WriteTest, DeskWithoutIdentifiersGetsNoSubscriptionAndNoWrite) {
    VirtualDesk& desk = addDesk({.name = "Z5-A"});
    int calls = 0;
    connect(desk, [&](const std::optional<Bytes>&, const OptionalError&) { ++calls; });
    EXPECT_EQ(connectReports, std::vector<int>{0});
    EXPECT_TRUE(facade().currentPeripheral()->isConnected());
    facade().writeDataWithCurrentperipheral(
        Bytes{0x01}, [&](const CharacteristicPtr&, const OptionalError&) { ++calls; });
    advance(1s);
    EXPECT_FALSE(desk.isSubscribed());
    EXPECT_TRUE(sent.empty());
    EXPECT_EQ(calls, 0);
}

// The link goes while a write is still looking for its characteristic: nothing to write to, so
// the session is told to rebuild the link instead; a write to the stale link then fails at once.
TEST_F(WriteTest, WritesOnALostLinkPostReconnectOrFailWithNotConnected) {
    VirtualDesk& desk = addDesk();
    const PeripheralPtr peripheral = connect(desk); // connected, nothing discovered yet
    facade().setAutoConnectAfterDisconnect(false);
    const int& reconnectPosts = countPosts(notifications::kReconnect);
    int calls = 0;
    facade().writeDataWithCurrentperipheral(
        Bytes{0x01}, [&](const CharacteristicPtr&, const OptionalError&) { ++calls; });
    desk.dropLink();
    advance(1s);
    EXPECT_EQ(reconnectPosts, 1);
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(sent.empty());

    std::optional<BluetoothError> error;
    facade().writeData(Bytes{0x01}, peripheral,
                       [&](const CharacteristicPtr& c, const OptionalError& e) {
                           EXPECT_FALSE(c);
                           error = e;
                       });
    EXPECT_EQ(error, (BluetoothError{
                         4, "the device does't connected ! please operation after connected !"}));
}

// Notification bytes are cut into frames however the desk splits and pads them, and nothing a
// desk sends stops the link from working.
TEST_F(WriteTest, NotificationStreamIsCutIntoFrames) {
    VirtualDesk& desk = addDesk();
    std::vector<Bytes> frames;
    std::vector<int> errors;
    connect(desk, [&](const std::optional<Bytes>& frame, const OptionalError& error) {
        if (frame) {
            frames.push_back(*frame);
            handle().handleTableData(*frame); // as the session does
        }
        if (error)
            errors.push_back(error->code);
    });
    desk.setSubscribed(false); // a quiet desk; the host stays subscribed
    advance(200ms);
    frames.clear();

    // Where a stream may be cut and what garbage it may hold is FrameSplitterTest's; here an
    // empty value and a display frame split byte by byte reach the classifier whole.
    const Bytes display = deskFrame(0x12, {0x06, 0xCF, 0x7D}); // reads 13.6
    central->injectNotification(&desk, Bytes{});
    for (std::uint8_t byte : display)
        central->injectNotification(&desk, Bytes{byte});
    EXPECT_EQ(frames, std::vector<Bytes>{display});
    EXPECT_EQ(handle().currentHeight(), 136);
    EXPECT_TRUE(errors.empty());

    // The desk speaks again and its polls are still answered.
    desk.setSubscribed(true);
    handle().setCurrentCommandType(1);
    const int before = desk.heightTenths();
    advance(1s);
    EXPECT_GT(desk.heightTenths(), before);
}

// A desk may report at once when a poll is answered, while the host is still handing out the
// notification that carried the poll: that report is cut and delivered after the rest of it.
TEST_F(WriteTest, NotificationArrivingDuringFrameHandlingWaitsItsTurn) {
    VirtualDesk& desk = addDesk();
    std::vector<int> order;
    connect(desk, [&](const std::optional<Bytes>& frame, const OptionalError&) {
        if (!frame)
            return;
        order.push_back((*frame)[2]);
        order.push_back(-(*frame)[2]); // handling of this frame has ended
    });
    desk.setSubscribed(false);
    advance(100ms);
    order.clear();
    bool answered = false;
    central->setWriteObserver([&](const GattPath&, const Bytes&) {
        if (!std::exchange(answered, true))
            central->injectNotification(&desk, deskFrame(0x82, Bytes(12, 0x00)));
    });
    Bytes pollThenDisplay = deskFrame(0x11, {});
    const Bytes display = deskFrame(0x12, {0x06, 0xCF, 0x7D});
    pollThenDisplay.insert(pollThenDisplay.end(), display.begin(), display.end());
    central->injectNotification(&desk, pollThenDisplay);
    EXPECT_TRUE(answered);
    EXPECT_EQ(order, (std::vector<int>{0x12, -0x12, 0x82, -0x82}));
}

} // namespace
} // namespace ostrel::test
