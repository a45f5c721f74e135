#include "TransportTestSupport.h"

namespace ostrel::test {
namespace {

// The operations the screens do not use, over a type-1 desk (one readable, writable and
// notifying characteristic FFF1 with its 0x2902 descriptor).
class GattOperationsTest : public TransportTest {
protected:
    void SetUp() override {
        TransportTest::SetUp();
        desk = &addDesk({.name = "Ostrel-CN-3", .bluetoothType = 1});
        peripheral = connect(*desk);
    }

    // Runs a search and returns its error code, or 0 when it found the characteristic.
    int searchCode(const QString& service, const QString& characteristic) {
        std::optional<int> code;
        tool().searchCharacteristicWithPeripheral(
            peripheral, service, characteristic,
            [&](const CharacteristicPtr& found, const OptionalError& error) {
                code = error ? error->code : (found ? 0 : -1);
            });
        advance(200ms);
        return code.value_or(-2);
    }

    VirtualDesk* desk = nullptr;
    PeripheralPtr peripheral;
};

TEST_F(GattOperationsTest, SearchAndDescriptorOperationsNameWhatIsMissing) {
    EXPECT_EQ(searchCode("FFF0", "FFF1"), 0);
    EXPECT_EQ(searchCode("180D", "2A37"), 7);
    EXPECT_EQ(searchCode("FFF0", "2A39"), 8);
    // Long and short forms name the same characteristic.
    EXPECT_EQ(searchCode("0000fff0-0000-1000-8000-00805f9b34fb", "fff1"), 0);
    EXPECT_EQ(tool().bluetoothState(), 5);

    // A descriptor operation on a characteristic without one.
    VirtualDesk& plain = addDesk({.name = "QWJ-0009"});
    const PeripheralPtr typeTwo = connect(plain);
    std::optional<BluetoothError> error;
    extras().writeDescriptorWithPeripheral(typeTwo, "180D", "2A39", {0x01},
                                           [&](const OptionalError& e) { error = e; });
    advance(200ms);
    ASSERT_TRUE(error);
    EXPECT_EQ(*error, (BluetoothError{12, "the characteristic no have descripotor"}));
}

TEST_F(GattOperationsTest, DescriptorAndValueReadsFollowTheSubscription) {
    std::vector<Bytes> values;
    auto collect = [&](const std::optional<Bytes>& value, const OptionalError& error) {
        EXPECT_FALSE(error);
        if (value)
            values.push_back(*value);
    };
    extras().readDescriptorWithPeripheral(peripheral, "FFF0", "FFF1", collect);
    advance(200ms);
    extras().writeDescriptorWithPeripheral(peripheral, "FFF0", "FFF1", {0x01, 0x00},
                                           [](const OptionalError& error) { EXPECT_FALSE(error); });
    advance(200ms);
    EXPECT_TRUE(desk->isSubscribed()); // the 0x2902 write switched notifications on
    extras().readDescriptorWithPeripheral(peripheral, "FFF0", "FFF1", collect);
    advance(200ms);
    extras().readValueWithPeripheral(peripheral, "FFF0", "FFF1", collect);
    advance(200ms);
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values[0], (Bytes{0x00, 0x00}));
    EXPECT_EQ(values[1], (Bytes{0x01, 0x00}));
    EXPECT_FALSE(values[2].empty()); // the desk's last notification
    EXPECT_EQ(tool().bluetoothState(), 7);
}

TEST_F(GattOperationsTest, RssiOfALiveLinkAndOfNone) {
    std::vector<int> results;
    extras().readRSSIWithPeripheral(peripheral, [&](int rssi, const OptionalError& error) {
        EXPECT_FALSE(error);
        results.push_back(rssi);
    });
    advance(100ms);
    facade().setAutoConnectAfterDisconnect(false);
    desk->dropLink();
    extras().readRSSIWithPeripheral(peripheral, [&](int, const OptionalError& error) {
        results.push_back(error ? error->code : 0);
    });
    EXPECT_EQ(results, (std::vector<int>{-55, 4}));
}

// A characteristic kept past its link reads nothing: its path now names the next link's, and a
// desk that is gone has no radio to ask.
TEST_F(GattOperationsTest, AStaleCharacteristicReadsNothing) {
    const auto find = [this] {
        CharacteristicPtr found;
        tool().searchCharacteristicWithPeripheral(
            peripheral, "FFF0", "FFF1",
            [&found](const CharacteristicPtr& c, const OptionalError&) { found = c; });
        advance(200ms);
        return found;
    };
    const CharacteristicPtr stale = find();
    desk->dropLink();
    advance(1s); // linked again by itself
    const CharacteristicPtr fresh = find();
    ASSERT_TRUE(stale && fresh && fresh != stale);
    int answers = 0;
    const auto count = [&answers](const CharacteristicPtr&, const Bytes&, const OptionalError&) {
        ++answers;
    };
    stale->readValueWithCallback(count);
    std::make_shared<BluetoothCharacteristic>("FFF1", 0, nullptr)->readValueWithCallback(count);
    advance(200ms);
    EXPECT_EQ(answers, 0);
    EXPECT_TRUE(fresh->readDataArray().isEmpty()) << "the next link was read for the old one";
}

TEST_F(GattOperationsTest, ConnectSubscribeAndWriteInOneCall) {
    facade().resetManager();
    advance(100ms);
    std::vector<Bytes> sent;
    central->setWriteObserver([&](const GattPath&, const Bytes& value) { sent.push_back(value); });
    int frames = 0;
    extras().connectDeviceWithName("Ostrel-CN-3", "FFF0", "FFF1", "FFF1", Bytes{0x9B, 0x01},
                                   [&](const std::optional<Bytes>& frame, const OptionalError& e) {
                                       EXPECT_FALSE(e);
                                       frames += frame ? 1 : 0;
                                   });
    advance(1s);
    ASSERT_FALSE(sent.empty());
    EXPECT_EQ(sent.front(), (Bytes{0x9B, 0x01}));
    EXPECT_GT(frames, 0);
}

} // namespace
} // namespace ostrel::test
