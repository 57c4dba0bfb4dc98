#include "platform/bookmark/format/BookmarkHeader.h"

#include "platform/values/ByteCursor.h"
#include "tests/platform/bookmark/Examples.h"

namespace tolvane::platform {
namespace {

using namespace tests;

TEST(BookmarkHeader, hasTheWholeLengthInItsFront) {
    EXPECT_EQ(claimedBookmarkLength(front(noteBookmark(), bookmarkFrontLength)), noteBookmark().size());
    EXPECT_EQ(claimedBookmarkLength(front(noteAliasFile(), bookmarkFrontLength)), noteAliasFile().size());
    EXPECT_EQ(claimedBookmarkLength(noteAliasFile()), noteAliasFile().size());
}

TEST(BookmarkHeader, reportsLengthsThatNoFileHas) {
    EXPECT_EQ(claimedBookmarkLength(withU32(noteBookmark(), 4, 0xFFFF'FFFF)), 0xFFFF'FFFFU);
    EXPECT_EQ(
        claimedBookmarkLength(withU32(withU32(noteAliasFile(), 16, 0xFFFF'FFFF), 24, 0xFFFF'FFFF)),
        0x1'FFFF'FFFEU);
    EXPECT_EQ(claimedBookmarkLength(withU32(noteBookmark(), 4, 0)), 0U);
}

TEST(BookmarkHeader, hasNoLengthWhereItIsCutOffOrInvalid) {
    for (std::size_t count = 0; count < 8; ++count) {
        EXPECT_EQ(claimedBookmarkLength(front(noteBookmark(), count)), std::nullopt) << count;
    }
    EXPECT_EQ(claimedBookmarkLength(front(noteBookmark(), 8)), noteBookmark().size());
    for (std::size_t count = 16; count < 28; ++count) {
        EXPECT_EQ(claimedBookmarkLength(front(noteAliasFile(), count)), std::nullopt) << count;
    }
    EXPECT_EQ(claimedBookmarkLength(front(noteAliasFile(), 28)), noteAliasFile().size());
    EXPECT_EQ(claimedBookmarkLength(withByte(noteBookmark(), 0, 'c')), std::nullopt);
    EXPECT_EQ(claimedBookmarkLength(dataOfHex("616c6973 2a000000")), 42U);
    EXPECT_EQ(claimedBookmarkLength({}), std::nullopt);
}

TEST(BookmarkHeader, namesTheTeamInItsLaterVersionOnly) {
    const auto teamIn = [](const Data& bytes) {
        return std::string(readWell(bytes).header.teamIdentifier());
    };
    const Data bytes = corpusData("team.bookmark");
    EXPECT_EQ(teamIn(bytes), "TEAM123456");
    EXPECT_EQ(teamIn(withByte(bytes, 0x34, 0)), "TEAM");
    EXPECT_EQ(teamIn(withByte(bytes, 0x30, 0)), "");
    EXPECT_EQ(teamIn(withU32(bytes, 8, 0x1004'0000)), "");
    EXPECT_EQ(teamIn(noteBookmark()), "");
    EXPECT_EQ(teamIn(withU32(noteAliasFile(), 28, 0x1005'0000)), "");
}

} // namespace
} // namespace tolvane::platform
