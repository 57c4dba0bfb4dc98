#include "platform/bookmark/format/BookmarkWriter.h"

#include "tests/platform/bookmark/Examples.h"

namespace tolvane::platform {
namespace {

using namespace tests;

TEST(BookmarkWriter, keepsOddHeadersPaddingsAndTrailingBytes) {
    Data bytes = noteBookmark();
    bytes = withByte(bytes, 0x10, 0xAB); // A byte of the security scope key.
    bytes = withByte(bytes, 0x4D, 0x99); // Padding after "Users".
    bytes = withU32(bytes, 0x08, 0x1005'0000);
    bytes.push_back(std::byte{7});
    EXPECT_EQ(bookmarkBytes(readWell(bytes)), bytes);

    Data aliasFile = noteAliasFile();
    for (const std::size_t offset : {0x14U, 0x20U, 0x24U, 0x27U, 0x28U, 0x30U, 0x34U, 0x37U}) {
        aliasFile = withByte(aliasFile, offset, 0x5A);
    }
    EXPECT_EQ(bookmarkBytes(readWell(aliasFile)), aliasFile);
}

TEST(BookmarkWriter, keepsHeadersThatAreLongerThanUsual) {
    Data bytes = noteBookmark();
    bytes.insert(bytes.begin() + 48, 16, std::byte{0xEE});
    bytes = withU32(withU32(bytes, 4, static_cast<std::uint32_t>(bytes.size())), 12, 64);
    const BookmarkStructure structure = readWell(bytes);
    EXPECT_EQ(structure.header.extra, Data(16, std::byte{0xEE}));
    EXPECT_EQ(bookmarkBytes(structure), bytes);
    EXPECT_EQ(aliasFileBytes(structure, Date(700'000'100.0)), noteAliasFile());
}

TEST(BookmarkWriter, leavesTheTeamIdentifierOutOfAliasFiles) {
    const Data bytes = corpusData("team.bookmark");
    EXPECT_EQ(bareBookmarkBytes(readWell(bytes)), bytes);
    EXPECT_EQ(aliasFileBytes(readWell(bytes), Date(700'000'100.0)), noteAliasFile());
    EXPECT_EQ(bareBookmarkBytes(readWell(withU32(noteAliasFile(), 28, 0x1005'0000))), noteBookmark());
}

TEST(BookmarkWriter, leavesWhatIsInTheRightContainerButForTrailingBytes) {
    Data bytes = withByte(noteBookmark(), 0x10, 0xAB);
    const Data whole = bytes;
    bytes.push_back(std::byte{7});
    EXPECT_EQ(bareBookmarkBytes(readWell(bytes)), whole);

    Data aliasFile = withByte(noteAliasFile(), 0x24, 0x5A);
    const Data wholeFile = aliasFile;
    aliasFile.push_back(std::byte{7});
    EXPECT_EQ(aliasFileBytes(readWell(aliasFile), Date(0)), wholeFile);
}

TEST(BookmarkWriter, movesTheSectionWithoutTheSecurityScopeKeyAndTheTime) {
    const Data scoped = withByte(noteBookmark(), 0x10, 0xAB);
    EXPECT_EQ(aliasFileBytes(readWell(scoped), Date(700'000'100.0)), noteAliasFile());
    EXPECT_EQ(bareBookmarkBytes(readWell(noteAliasFile())), noteBookmark());
}

TEST(BookmarkWriter, makesAnAliasRecordInABookmarkAnAliasFile) {
    Data bytes = withU32(noteBookmark(), 0, 0x7369'6C61); // "alis"
    const BookmarkStructure structure = readWell(bytes);
    EXPECT_EQ(structure.header.container, BookmarkContainer::bareAlias);
    EXPECT_EQ(bookmarkBytes(structure), bytes);
    EXPECT_EQ(bareBookmarkBytes(structure), bytes);
    EXPECT_EQ(aliasFileBytes(structure, Date(700'000'100.0)), noteAliasFile());
}

} // namespace
} // namespace tolvane::platform
