#include "protocol/CRC8.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

const Bytes kCheck{'1', '2', '3', '4', '5', '6', '7', '8', '9'};

TEST(CRC8Test, ChecksumIsTheSameHoweverTheBytesArrive) {
    CRC8 whole;
    whole.updateWithBuf(kCheck, kCheck.size());
    EXPECT_EQ(whole.getValue(), 0xA1);

    CRC8 pieces;
    pieces.updateWithBuf(kCheck, 0, 4);
    pieces.updateWithBuf(kCheck, 4, 3);
    pieces.updateWithValue('8');
    pieces.updateWithValue('9');
    EXPECT_EQ(pieces.getValue(), 0xA1);

    pieces.reset();
    EXPECT_EQ(pieces.getValue(), 0);
}

TEST(CRC8Test, RangePastTheEndIsCut) {
    CRC8 cut;
    cut.updateWithBuf(kCheck, 5, 100);
    cut.updateWithBuf(kCheck, 50, 3);
    CRC8 tail;
    for (std::size_t i = 5; i < kCheck.size(); ++i)
        tail.updateWithValue(kCheck[i]);
    EXPECT_EQ(cut.getValue(), tail.getValue());
    EXPECT_NE(cut.getValue(), 0);
}

} // namespace
} // namespace ostrel
