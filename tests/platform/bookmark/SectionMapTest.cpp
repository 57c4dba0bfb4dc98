#include "platform/bookmark/SectionMap.h"

#include <gtest/gtest.h>

#include <optional>

namespace tolvane::platform {
namespace {

TEST(SectionMap, knowsThePieceThatStartsAtAnOffset) {
    SectionMap map(100);
    EXPECT_TRUE(map.claim(4, 8, 7));
    EXPECT_TRUE(map.claim(12, 20, 8));
    EXPECT_EQ(map.pieceStartingAt(4), 7U);
    EXPECT_EQ(map.pieceStartingAt(12), 8U);
    EXPECT_EQ(map.pieceStartingAt(5), std::nullopt);
    EXPECT_EQ(map.pieceStartingAt(20), std::nullopt);
}

TEST(SectionMap, keepsPiecesApartThatStartAtOddOffsets) {
    SectionMap map(40);
    EXPECT_TRUE(map.claim(7, 8, 1));
    EXPECT_TRUE(map.claim(15, 8, 2));
    EXPECT_TRUE(map.claim(23, 17, 3));
    EXPECT_EQ(map.pieceStartingAt(7), 1U);
    EXPECT_EQ(map.pieceStartingAt(15), 2U);
    EXPECT_EQ(map.pieceStartingAt(23), 3U);
}

TEST(SectionMap, givesNoByteAway) {
    for (const std::size_t offset : {1U, 8U, 10U, 12U, 15U}) {
        SectionMap map(40);
        ASSERT_TRUE(map.claim(8, 8, 1));
        EXPECT_FALSE(map.claim(offset, 8, 2)) << offset;
    }
    SectionMap map(40);
    ASSERT_TRUE(map.claim(8, 8, 1));
    EXPECT_FALSE(map.claim(4, 30, 2)) << "around another piece";
}

} // namespace
} // namespace tolvane::platform
