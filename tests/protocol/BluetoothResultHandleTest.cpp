#include "protocol/BluetoothResultHandle.h"

#include "ProtocolTestSupport.h"
#include "protocol/BluetoothProtocol.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

using test::deskFrame;
using test::hexBytes;

// A fresh shared classifier per test, with every callback recorded as "Name:argument".
class BluetoothResultHandleTest : public ::testing::Test {
protected:
    void SetUp() override {
        previous =
            BluetoothResultHandle::replaceSharedInstance(std::make_unique<BluetoothResultHandle>());
        handle().setWriter([this](const Bytes& answer) { written.push_back(answer); });
        const auto text = [this](const char* name) {
            return [this, name](const std::string& r) { events.push_back(name + (":" + r)); };
        };
        handle().bluetoothResultHandle_RST = text("RST");
        handle().bluetoothResultHandle_Bottom = text("Bottom");
        handle().bluetoothResultHandle_Top = text("Top");
        handle().bluetoothResultHandle_SlideDownward = text("SlideDownward");
        handle().bluetoothResultHandle_Error = text("Error");
        handle().bluetoothResultHandle_Manage = text("Manage");
        handle().bluetoothResultHandle_Other = text("Other");
        handle().bluetoothResultHandle_HeightChange = [this](int height) {
            events.push_back("HeightChange:" + std::to_string(height));
        };
        handle().bluetoothResultHandle_ChildLock = [this](bool lock) {
            events.push_back(lock ? "ChildLock:1" : "ChildLock:0");
        };
    }
    void TearDown() override { BluetoothResultHandle::replaceSharedInstance(std::move(previous)); }

    static BluetoothResultHandle& handle() { return BluetoothResultHandle::sharedInstance(); }
    void display(std::uint8_t d1, std::uint8_t d2, std::uint8_t d3) {
        events.clear();
        handle().handleTableData(deskFrame(0x12, {d1, d2, d3}));
    }
    void poll() { handle().handleTableData(deskFrame(0x11, {0x00})); }

    std::unique_ptr<BluetoothResultHandle> previous;
    std::vector<Bytes> written;
    std::vector<std::string> events;
};

TEST_F(BluetoothResultHandleTest, CrcCheckAcceptsOnlyIntactFrames) {
    EXPECT_TRUE(BluetoothResultHandle::crcCheck(hexBytes("9B 05 03 82 50 E1 9D")));
    EXPECT_TRUE(BluetoothResultHandle::crcCheck(hexBytes("9B FF FF 9D")));
    EXPECT_TRUE(BluetoothResultHandle::crcCheck(test::wrapBody(hexBytes("09 03 82"))))
        << "the length byte is not compared with the size";
    for (const char* bad : {"9B 05 03 82 E1 50 9D", "9A 05 03 82 50 E1 9D", "9B 05 03 82 50 E1 9C",
                            "9B 05 03 83 50 E1 9D", "", "9B", "9B 9D", "9B FF 9D"})
        EXPECT_FALSE(BluetoothResultHandle::crcCheck(hexBytes(bad))) << bad;
}

TEST_F(BluetoothResultHandleTest, PollIsAnsweredWithTheHeldKeyUntilItChanges) {
    handle().setTargetHeight(1234);
    handle().setThicknessHeight(25);
    const std::pair<int, Bytes> answers[] = {
        {0, hexBytes("9B 06 02 00 00 6C A1 9D")},
        {1, BluetoothProtocol::cmdForTableResponseType(1)},
        {4, hexBytes("9B 05 03 82 50 E1 9D")},
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
        EXPECT_EQ(handle().currentCommandType(), type);
    }
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
        {0x40, 0x3F, 0x38, BluetoothResultHandle::kSlideDown, 1,
         std::string("SlideDownward:") + BluetoothResultHandle::kSlideDown},
        {0x40, 0x5C, 0x38, "-OL", 2, "Error:-OL"},
        {0x6D, 0x40, 0x06, "S-", 1, "Manage:S-"},
        {0x38, 0x06, 0x06, "L", 1, "Other:L"},
        {0x77, 0x00, 0x00, "A-", 1, "Other:A-"},
        {0x3F, 0x71, 0x71, BluetoothResultHandle::kPowerOff, 1,
         std::string("Other:") + BluetoothResultHandle::kPowerOff},
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
        std::vector<std::string> expected{"ChildLock:0"};
        if (!c.event.empty())
            expected.push_back(c.event);
        EXPECT_EQ(events, expected);
    }
    EXPECT_EQ(handle().currentHeight(), 720);
}

TEST_F(BluetoothResultHandleTest, WordsThatKeepStateOrRepeatThePreviousResult) {
    display(0x06, 0xCF, 0x7D);
    display(0x38, 0x3F, 0x39); // LOC
    EXPECT_EQ(events, (std::vector<std::string>{"ChildLock:1", "HeightChange:136"}));
    EXPECT_TRUE(handle().lock());

    display(0x3F, 0x54, 0x00); // On after a height with an "0" first digit
    EXPECT_EQ(events, (std::vector<std::string>{"ChildLock:1", "HeightChange:136"}));
    display(0x5C, 0x54, 0x00);
    EXPECT_EQ(events, (std::vector<std::string>{"ChildLock:1"}));
    EXPECT_EQ(handle().result(), BluetoothResultHandle::kPowerOn);

    display(0x79, 0x06, 0x3F);
    display(0x3F, 0x71, 0x71); // OFF keeps the error
    EXPECT_EQ(handle().state(), 2);
    EXPECT_EQ(handle().errorCode(), "E10");
    display(0x3F, 0x54, 0x3F); // not On: an ordinary display clears the error
    EXPECT_EQ(handle().state(), 1);
    EXPECT_EQ(handle().errorCode(), "");
}

TEST_F(BluetoothResultHandleTest, DeviceInformationReport) {
    std::vector<DeviceModel> models;
    handle().bluetoothResultHandle_DeviceInfo = [&](const DeviceModel& m) { models.push_back(m); };
    handle().setCurrentCommandType(4);
    const Bytes payload = hexBytes("01 7C 04 58 02 03 FF 00 00 00 00 1E");
    handle().handleTableData(deskFrame(0x82, payload));
    ASSERT_EQ(models.size(), 1u);
    EXPECT_EQ(models[0].mUnit, 1);
    EXPECT_EQ(models[0].maxHeight, 1148);
    EXPECT_EQ(models[0].minHeight, 600);
    EXPECT_EQ(models[0].sensitivity, 3);
    EXPECT_TRUE(models[0].supportChildLock);
    EXPECT_EQ(models[0].tableThickness, 30);
    EXPECT_EQ(handle().currentCommandType(), 0);

    handle().setCurrentCommandType(1);
    handle().handleTableData(deskFrame(0x82, payload));
    EXPECT_EQ(handle().currentCommandType(), 1) << "only the information request is settled";
    handle().handleTableData(deskFrame(0x82, Bytes(payload.begin(), payload.end() - 1)));
    EXPECT_EQ(models.size(), 2u) << "a report too short for position 14 is ignored";
}

TEST_F(BluetoothResultHandleTest, LightStripReportSwapsGreenAndRedBack) {
    std::vector<std::vector<int>> reports;
    handle().bluetoothResultHandle_LightColorInfo = [&](int sw, int mode, int r, int g, int b) {
        reports.push_back({sw, mode, r, g, b});
    };
    handle().handleTableData(deskFrame(0x9F, hexBytes("01 09 22 11 33")));
    handle().handleTableData(deskFrame(0x9F, hexBytes("01 09 22 11")));
    EXPECT_EQ(reports, (std::vector<std::vector<int>>{{1, 9, 0x11, 0x22, 0x33}}));
}

TEST_F(BluetoothResultHandleTest, MissingCallbacksAreSkipped) {
    BluetoothResultHandle bare;
    bare.handleTableData(deskFrame(0x12, {0x06, 0xCF, 0x7D}));
    bare.handleTableData(deskFrame(0x11, {}));
    bare.handleTableData(deskFrame(0x9F, hexBytes("01 09 22 11 33")));
    EXPECT_EQ(bare.currentHeight(), 136);
    EXPECT_NE(&bare, &handle());
}

} // namespace
} // namespace ostrel
