#include "platform/values/ByteCursor.h"

#include "tests/platform/bookmark/Examples.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

TEST(ByteCursor, readsNumbersInBothByteOrders) {
    const Data bytes = tests::dataOfHex("01 0203 040506 0708090a 0b0c0d0e 0f10111213141516 1718191a1b1c1d1e");
    ByteCursor cursor(bytes);
    EXPECT_EQ(cursor.u8(), 0x01);
    EXPECT_EQ(cursor.u16be(), 0x0203);
    EXPECT_EQ(cursor.u24be(), 0x04'0506U);
    EXPECT_EQ(cursor.u32be(), 0x0708'090AU);
    EXPECT_EQ(cursor.u32le(), 0x0E0D'0C0BU);
    EXPECT_EQ(cursor.u64le(), 0x1615'1413'1211'100FU);
    EXPECT_EQ(cursor.bigEndian(8), 0x1718'191A'1B1C'1D1EU);
    EXPECT_EQ(cursor.remaining(), 0U);
    EXPECT_FALSE(cursor.failed());
}

TEST(ByteCursor, staysWhereAReadFailedAndGivesZerosFromThenOn) {
    const Data bytes = tests::dataOfHex("0102030405");
    ByteCursor cursor(bytes);
    cursor.take(2);
    EXPECT_EQ(cursor.u32le(), 0U);
    EXPECT_EQ(cursor.failedAt(), 2U);
    EXPECT_EQ(cursor.position(), 2U);
    EXPECT_EQ(cursor.u8(), 0U) << "a byte is left, but the cursor has failed";
    EXPECT_TRUE(cursor.take(0).empty());
    cursor.seek(5);
    EXPECT_EQ(cursor.position(), 2U);
    EXPECT_EQ(cursor.failedAt(), 2U);
}

TEST(ByteCursor, refusesACountThatWouldOverflowThePosition) {
    const Data bytes = tests::dataOfHex("0102030405");
    for (const std::size_t count : {SIZE_MAX, SIZE_MAX - 2}) {
        ByteCursor cursor(bytes);
        cursor.take(3);
        EXPECT_TRUE(cursor.take(count).empty()) << count;
        EXPECT_EQ(cursor.failedAt(), 3U) << count;
    }
}

TEST(ByteCursor, takesAndGoesToTheEndButNotPastIt) {
    const Data bytes = tests::dataOfHex("010203");
    ByteCursor taking(bytes);
    EXPECT_EQ(taking.take(3).size(), 3U);
    EXPECT_TRUE(taking.take(0).empty());
    EXPECT_FALSE(taking.failed());
    EXPECT_TRUE(taking.take(1).empty());
    EXPECT_EQ(taking.failedAt(), 3U);

    ByteCursor seeking(bytes);
    seeking.seek(3);
    EXPECT_FALSE(seeking.failed());
    seeking.seek(1);
    EXPECT_EQ(seeking.u8(), 2U);
    seeking.seek(4);
    EXPECT_EQ(seeking.failedAt(), 2U);

    ByteCursor nothing({});
    EXPECT_FALSE(nothing.failed());
    EXPECT_EQ(nothing.u64le(), 0U);
    EXPECT_EQ(nothing.failedAt(), 0U);
}

} // namespace
} // namespace tolvane::platform
