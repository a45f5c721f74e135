#include "protocol/BluetoothResultHandle.h"

#include "ProtocolTestSupport.h"
#include "protocol/BluetoothProtocol.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

using test::deskFrame;
using test::hexBytes;
using Handle = BluetoothResultHandle;
using Events = std::vector<std::string>;

// A fresh shared classifier per test, with every display event recorded as "Name:argument".
class BluetoothResultHandleTest : public ::testing::Test {
protected:
    void SetUp() override {
        previous = Handle::replaceSharedInstance(std::make_unique<Handle>());
        handle().setWriter([this](const Bytes& answer) { written.push_back(answer); });
        const std::pair<const char*, Handle::TextCallback Handle::*> texts[] = {
            {"RST", &Handle::bluetoothResultHandle_RST},
            {"Bottom", &Handle::bluetoothResultHandle_Bottom},
            {"Top", &Handle::bluetoothResultHandle_Top},
            {"SlideDownward", &Handle::bluetoothResultHandle_SlideDownward},
            {"Error", &Handle::bluetoothResultHandle_Error},
            {"Manage", &Handle::bluetoothResultHandle_Manage},
            {"Other", &Handle::bluetoothResultHandle_Other},
        };
        for (const auto& [name, member] : texts)
            handle().*member = [this, n = std::string(name)](const std::string& r) {
                events.push_back(n + ':' + r);
            };
        handle().bluetoothResultHandle_HeightChange = [this](int height) {
            events.push_back("HeightChange:" + std::to_string(height));
        };
        handle().bluetoothResultHandle_ChildLock = [this](bool lock) {
            events.push_back(lock ? "ChildLock:1" : "ChildLock:0");
        };
    }
    void TearDown() override { Handle::replaceSharedInstance(std::move(previous)); }

    static Handle& handle() { return Handle::sharedInstance(); }
    void display(std::uint8_t d1, std::uint8_t d2, std::uint8_t d3) {
        events.clear();
        handle().handleTableData(deskFrame(0x12, {d1, d2, d3}));
    }
    void poll() { handle().handleTableData(deskFrame(0x11, {0x00})); }

    std::unique_ptr<Handle> previous;
    std::vector<Bytes> written;
    Events events;
};

TEST_F(BluetoothResultHandleTest, CrcCheckAcceptsOnlyIntactFrames) {
    EXPECT_TRUE(Handle::crcCheck(hexBytes("9B 05 03 82 50 E1 9D")));
    EXPECT_TRUE(Handle::crcCheck(hexBytes("9B FF FF 9D")));
    EXPECT_TRUE(Handle::crcCheck(test::wrapBody(hexBytes("09 03 82"))))
        << "the length byte is not compared with the size";
    for (const char* bad : {"9B 05 03 82 E1 50 9D", "9A 05 03 82 50 E1 9D", "9B 05 03 82 50 E1 9C",
                            "9B 05 03 83 50 E1 9D", "", "9B", "9B 9D", "9B FF 9D"})
        EXPECT_FALSE(Handle::crcCheck(hexBytes(bad))) << bad;
}

TEST_F(BluetoothResultHandleTest, PollIsAnsweredWithTheHeldKeyUntilItChanges) {
    handle().setTargetHeight(1234);
    handle().setThicknessHeight(25);
    const std::pair<int, Bytes> answers[] = {
        {0, hexBytes("9B 06 02 00 00 6C A1 9D")},
        {1, BluetoothProtocol::cmdForTableResponseType(1)},
        {4, BluetoothProtocol::cmdForTableInfo()},
        {5, BluetoothProtocol::cmdForTableTargetHeight(1234)},
        {6, BluetoothProtocol::cmdForTableEditTabletopThickness(25)},
        {13, BluetoothProtocol::cmdForTableResponseType(13)},
    };
    for (const auto& [type, answer] : answers) {
        written.clear();
        handle().setCurrentCommandType(type);
        poll();
        poll();
        EXPECT_EQ(written, (std::vector<Bytes>{answer, answer})) << type;
    }
    // A target changed while it is held is answered from the next poll on.
    handle().setCurrentCommandType(5);
    handle().setTargetHeight(1300);
    written.clear();
    poll();
    EXPECT_EQ(written, std::vector<Bytes>{BluetoothProtocol::cmdForTableTargetHeight(1300)});
    written.clear();
    for (int unanswered : {15, -1}) {
        handle().setCurrentCommandType(unanswered);
        poll();
    }
    handle().setCurrentCommandType(1);
    Bytes corrupt = deskFrame(0x11, {0x00});
    corrupt[3] ^= 0x01;
    handle().handleTableData(corrupt);
    handle().handleTableData(hexBytes("9B 03 11 9D")); // type byte where the CRC belongs
    EXPECT_TRUE(written.empty());
}

TEST_F(BluetoothResultHandleTest, DisplayClassificationAndEvents) {
    const std::string slide = Handle::kSlideDown, off = Handle::kPowerOff;
    struct Case {
        std::uint8_t d1, d2, d3;
        std::string result;
        int state;
        std::string event; // after ChildLock:0
    };
    const Case cases[] = {
        {0x06, 0xCF, 0x7D, "13.6", 1, "HeightChange:136"},
        {0x79, 0x06, 0x3F, "E10", 2, "Error:E10"},
        {0x77, 0x6D, 0x78, "RST", 0, "RST:RST"},
        {0x7C, 0x5C, 0x31, "Bottom", 1, "Bottom:Bottom"},
        {0x31, 0x3F, 0x73, "Top", 1, "Top:Top"},
        {0x40, 0x3F, 0x38, slide, 1, "SlideDownward:" + slide},
        {0x40, 0x5C, 0x38, "-OL", 2, "Error:-OL"},
        {0x6D, 0x40, 0x06, "S-", 1, "Manage:S-"},
        {0x38, 0x06, 0x06, "L", 1, "Other:L"},
        {0x77, 0x00, 0x00, "A-", 1, "Other:A-"},
        {0x3F, 0x71, 0x71, off, 1, "Other:" + off},
        {0x50, 0x40, 0x38, "LR", 1, ""},
        {0x78, 0x3F, 0x73, "t0", 1, ""}, // not TOP: read as digits, and not a height
        {0x00, 0x07, 0x5B, "72", 1, ""}, // blank first digit: no height event
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.result);
        display(0x06, 0x06, 0x3F); // a plain height first, so state and errors start known
        display(c.d1, c.d2, c.d3);
        EXPECT_EQ(handle().result(), c.result);
        EXPECT_EQ(handle().state(), c.state);
        EXPECT_EQ(handle().errorCode(), c.state == 2 ? c.result : "");
        const Events expected =
            c.event.empty() ? Events{"ChildLock:0"} : Events{"ChildLock:0", c.event};
        EXPECT_EQ(events, expected);
    }
    EXPECT_EQ(handle().currentHeight(), 720);
}

TEST_F(BluetoothResultHandleTest, WordsThatKeepStateOrRepeatThePreviousResult) {
    display(0x06, 0xCF, 0x7D);
    display(0x38, 0x3F, 0x39); // LOC
    EXPECT_EQ(events, (Events{"ChildLock:1", "HeightChange:136"}));
    display(0x3F, 0x54, 0x00); // On, whose first digit could be a height's
    EXPECT_EQ(events, (Events{"ChildLock:1", "HeightChange:136"}));
    display(0x5C, 0x54, 0x00);
    EXPECT_EQ(events, (Events{"ChildLock:1"}));

    display(0x79, 0x06, 0x3F);
    display(0x3F, 0x71, 0x71); // OFF keeps the error
    EXPECT_EQ(handle().errorCode(), "E10");
    EXPECT_EQ(handle().state(), 2);
    display(0x3F, 0x54, 0x3F); // not On: an ordinary display clears the error
    EXPECT_EQ(handle().errorCode(), "");
    EXPECT_EQ(handle().state(), 1);
}

TEST_F(BluetoothResultHandleTest, DeviceAndLightStripReports) {
    std::vector<DeviceModel> models;
    handle().bluetoothResultHandle_DeviceInfo = [&](const DeviceModel& m) { models.push_back(m); };
    std::vector<std::vector<int>> colours;
    handle().bluetoothResultHandle_LightColorInfo = [&](int sw, int mode, int r, int g, int b) {
        colours.push_back({sw, mode, r, g, b});
    };
    handle().setCurrentCommandType(4);
    const Bytes info = hexBytes("01 7C 04 58 02 03 FF 00 00 00 00 1E");
    handle().handleTableData(deskFrame(0x82, info));
    handle().handleTableData(deskFrame(0x82, Bytes(info.begin(), info.end() - 1))); // too short
    handle().handleTableData(deskFrame(0x9F, hexBytes("01 09 22 11 33")));
    handle().handleTableData(deskFrame(0x9F, hexBytes("01 09 22 11")));

    ASSERT_EQ(models.size(), 1u);
    const auto& m = models[0];
    EXPECT_EQ(std::tie(m.mUnit, m.maxHeight, m.minHeight, m.sensitivity, m.tableThickness),
              std::make_tuple(1, 1148, 600, 3, 30));
    EXPECT_TRUE(m.supportChildLock);
    EXPECT_EQ(handle().currentCommandType(), 0) << "the information request is settled";
    EXPECT_EQ(colours, (std::vector<std::vector<int>>{{1, 9, 0x11, 0x22, 0x33}}));
}

TEST(BluetoothResultHandleBareTest, MissingCallbacksAreSkipped) {
    Handle bare;
    bare.handleTableData(deskFrame(0x12, {0x06, 0xCF, 0x7D}));
    bare.handleTableData(deskFrame(0x11, {}));
    bare.handleTableData(deskFrame(0x9F, hexBytes("01 09 22 11 33")));
    EXPECT_EQ(bare.currentHeight(), 136);
}

} // namespace
} // namespace ostrel
