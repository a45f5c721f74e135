#include "protocol/CRC8.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

TEST(CRC8Test, SameChecksumHoweverTheBytesArriveAndRangesAreCutAtTheEnd) {
    const Bytes check{'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    CRC8 crc;
    crc.updateWithBuf(check, 4);
    crc.updateWithBuf(check, 4, 3);
    crc.updateWithValue('8');
    crc.updateWithBuf(check, 8, 100);
    crc.updateWithBuf(check, 50, 3);
    EXPECT_EQ(crc.getValue(), 0xA1);
    crc.reset();
    EXPECT_EQ(crc.getValue(), 0);
}

} // namespace
} // namespace ostrel
