#include "protocol/BluetoothProtocol.h"

#include "ProtocolTestSupport.h"
#include "protocol/BluetoothResultHandle.h"

#include <functional>
#include <gtest/gtest.h>
#include <set>

namespace ostrel {
namespace {

using P = BluetoothProtocol;
using test::hexBytes;

TEST(BluetoothProtocolTest, HexTextConversion) {
    const std::pair<std::string, std::string> cases[] = {
        {"050382", "05 03 82"}, {"0712FFFFFF", "07 12 FF FF FF"}, {"abc", "AB C0"}, {"zz", "00"},
        {"1z", "10"},           {" 05 0382 ", "05 03 82"},        {"a ", "A0"},     {"", ""},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(P::dataForHexString(text), hexBytes(expected)) << '"' << text << '"';
    EXPECT_EQ(P::dataForHexString(std::nullopt), std::nullopt);
}

TEST(BluetoothProtocolTest, CommandCatalogue) {
    EXPECT_EQ(P::cmdForTableInfo(), hexBytes("9B 05 03 82 50 E1 9D"));
    EXPECT_EQ(P::cmdForKeyDisplay(), hexBytes("9B 07 12 FF FF FF 38 A5 9D"));
    EXPECT_EQ(P::cmdForTableResponseType(0), hexBytes("9B 06 02 00 00 6C A1 9D"));
    for (int empty : {4, 5, 6, 15, -1})
        EXPECT_EQ(P::cmdForTableResponseType(empty), hexBytes("9B FF FF 9D")) << empty;

    // Every other frame: the listed body, then a CRC the desk accepts.
    std::vector<std::pair<Bytes, std::string>> frames = {
        {P::cmdForTableTargetHeight(1234), "07 03 80 D2 04"},
        {P::cmdForTableEditTabletopThickness(0x1FF), "06 03 86 FF"},
        {P::cmdForResistanceGoBackWithState("0", 3), "07 03 89 00 00"},
        {P::cmdForResistanceGoBackWithState("1", 3), "07 03 89 03 00"},
        {P::cmdForResistanceGoBackWithState(1, 0x102), "07 03 89 02 00"},
        {*P::cmdForLightStripColorWithSwitchStatus(1, 9, 0x11, 0x22, 0x33),
         "0A 03 9F 01 09 22 11 33"},
        {*P::cmdForLightStripColorWithSwitchStatus(0, 8, 1, 2, 3), "07 03 9F 00 08"},
        {*P::cmdForLightStripColorWithSwitchStatus(1, 1, 1, 2, 3), "07 03 9F 01 01"},
    };
    const std::pair<int, const char*> responses[] = {
        {1, "06 02 01 00"},  {2, "06 02 02 00"},  {3, "06 02 30 00"},  {7, "06 03 83 01"},
        {8, "06 03 83 02"},  {9, "06 02 04 00"},  {10, "06 02 08 00"}, {11, "06 02 10 00"},
        {12, "06 02 00 01"}, {13, "06 02 20 00"}, {14, "06 02 40 00"},
    };
    for (const auto& [type, body] : responses)
        frames.emplace_back(P::cmdForTableResponseType(type), body);
    for (const auto& [frame, body] : frames) {
        EXPECT_TRUE(BluetoothResultHandle::crcCheck(frame)) << body;
        EXPECT_EQ(Bytes(frame.begin() + 1, frame.end() - 3), hexBytes(body));
    }
    for (int mode : {0, 10})
        EXPECT_FALSE(P::cmdForLightStripColorWithSwitchStatus(1, mode, 1, 2, 3)) << mode;
}

TEST(BluetoothProtocolTest, HeightAndErrorTexts) {
    struct Case {
        int d1, d2, d3;
        const char* height;
        const char* error;
    };
    const Case cases[] = {
        {0x06, 0xBF, 0x7D, "10.6", "E6"},  {0x00, 0x00, 0x00, "", "E"},
        {0x7D, 0xDB, 0x4F, "62.3", "E3"},  {0x06, 0x06, 0x3F, "110", "E10"},
        {0x00, 0x07, 0x5B, "72", "E72"},   {0x86, 0x06, 0xBF, "1", "E1"},
        {0x79, 0x3F, 0x66, "E04", "E04"},  {0x79, 0x5B, 0x7C, "E2b", "E2B"},
        {0x40, 0x3F, 0x38, "hg0", "-OL"},  {0x40, 0x5C, 0x38, "hgo", "-OL"},
        {0x09, 0x78, 0x31, "PttT", "ETT"}, {0x50, 0x1E, 0x06, "r1", "EJ1"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(P::getNumber(c.d1, c.d2, c.d3), c.height) << c.d1 << ' ' << c.d2 << ' ' << c.d3;
        EXPECT_EQ(P::getError(c.d1, c.d2, c.d3), c.error) << c.d1 << ' ' << c.d2 << ' ' << c.d3;
    }
    for (int code = 0x81; code < 0x100; ++code) {
        const std::string_view all[] = {P::getNumberShow(code), P::getStringValue(code),
                                        P::getSpecialStr1(code), P::getSpecialStr2(code)};
        EXPECT_TRUE(std::all_of(std::begin(all), std::end(all), [](auto t) { return t.empty(); }))
            << code;
    }
}

// Each recogniser checked against the raw codes it must accept, over every combination of the
// shapes the handset can show plus blanks and decimal points.
TEST(BluetoothProtocolTest, RecognisersAcceptExactlyTheirShapes) {
    using Accepts = std::function<bool(int)>;
    const auto in = [](std::set<int> set) { return [set](int x) { return set.count(x) != 0; }; };
    const Accepts any = [](int) { return true; };
    const Accepts roundO = in({0x3F, 0x5C});
    struct Rule {
        const char* name;
        bool (*recogniser)(int, int, int);
        Accepts a, b, c;
    };
    const Rule rules[] = {
        {"RST", P::isRST, in({0x77, 0x50}), in({0x6D}), in({0x78, 0x31})},
        {"Bottom", P::isBottom, in({0x7C}), roundO, in({0x78, 0x31})},
        {"OFF", P::isOFF, roundO, in({0x71}), in({0x71})},
        {"OL", P::isOL, in({0x40}), roundO, in({0x38})},
        {"On", P::isOn, roundO, in({0x54, 0x37}), in({0x00})},
        {"Top", P::isTop, in({0x31}), roundO, in({0x73})},
        {"LR", P::isLRChange, in({0x50, 0x38}), in({0x40}), in({0x50, 0x38})},
        {"LOC", P::isLOC, in({0x38}), roundO, in({0x58, 0x39})},
        {"MemoryHeight", P::isMemoryHeight, in({0x6D}), in({0x40}), any},
        {"Backward", P::isBackward, in({0x77}), any, any},
        {"000", P::is000, in({0x00}), in({0x00}), in({0x00})},
    };
    std::vector<int> shapes{0x00, 0x01, 0x80, 0xBF, 0xFF};
    for (int code = 0; code < 0x80; ++code)
        if (!P::getNumberShow(code).empty() || !P::getStringValue(code).empty())
            shapes.push_back(code);
    for (int a : shapes)
        for (int b : shapes)
            for (int c : shapes) {
                for (const Rule& rule : rules)
                    ASSERT_EQ(rule.recogniser(a, b, c), rule.a(a) && rule.b(b) && rule.c(c))
                        << rule.name << ' ' << a << ' ' << b << ' ' << c;
                ASSERT_EQ(P::isError(a, b, c), a == 0x79 || (a == 0x40 && b == 0x5C && c == 0x38));
                ASSERT_EQ(P::isVersion(a, b, c),
                          a == 0x38 || (a == 0x6D && b == 0x77 && c == 0x39));
            }
}

} // namespace
} // namespace ostrel
