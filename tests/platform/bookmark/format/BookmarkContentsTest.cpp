#include "platform/bookmark/format/BookmarkContents.h"

#include "platform/bookmark/format/BookmarkComposer.h"
#include "tests/platform/bookmark/Examples.h"

namespace tolvane::platform {
namespace {

using namespace tests;

TEST(BookmarkContents, areEmptyWithoutATableForTheTarget) {
    HandmadeSection section;
    const std::uint32_t name = section.addText(record_type::string, "Disk");
    const std::uint32_t table = section.addTable(77, 0, {{bookmark_key::volumeName, name}});
    EXPECT_TRUE(bookmarkContents(readWell(section.bookmarkWithTable(table))) == BookmarkContents{});
}

TEST(BookmarkContents, ignoreValuesOfAnotherKind) {
    HandmadeSection section;
    const std::uint32_t number = section.addWords(record_type::int32, {5});
    const std::uint32_t text = section.addText(record_type::string, "five");
    const std::uint32_t mixed = section.addWords(record_type::array, {number, text});
    const std::uint32_t data = section.add(record_type::data, Data(23));
    const BookmarkContents contents = bookmarkContents(readWell(section.bookmark(
        {{bookmark_key::targetURL, number},
         {bookmark_key::pathComponents, mixed},
         {bookmark_key::fileIDs, mixed},
         {bookmark_key::fileFlags, data},
         {bookmark_key::fileName, number},
         {bookmark_key::creationDate, text},
         {bookmark_key::createdWithRelativeURL, text},
         {bookmark_key::volumeDepths, text},
         {bookmark_key::volumeURL, text},
         {bookmark_key::volumeCapacity, text},
         {bookmark_key::volumeFlags, number},
         {bookmark_key::volumeWasBoot, number},
         {bookmark_key::creationOptions, text}})));
    EXPECT_TRUE(contents == BookmarkContents{});
}

TEST(BookmarkContents, mayHaveTheirURLStoredAsString) {
    HandmadeSection section;
    const std::uint32_t text = section.addText(record_type::string, "afp://host/share");
    EXPECT_EQ(
        bookmarkContents(readWell(section.bookmark({{bookmark_key::targetURL, text}}))).url,
        "afp://host/share");
}

TEST(BookmarkContents, readNumbersOfAnyWidth) {
    HandmadeSection section;
    const std::uint32_t narrow = section.add(record_type::int8, {std::byte{0xFE}});
    const std::uint32_t wide = section.addWords(record_type::int64, {1, 1});
    const std::uint32_t numbers = section.addWords(record_type::array, {narrow, wide});
    const BookmarkContents contents = bookmarkContents(readWell(section.bookmark(
        {{bookmark_key::fileIDs, numbers},
         {bookmark_key::volumeCapacity, narrow},
         {bookmark_key::userID, wide}})));
    ASSERT_TRUE(contents.fileIDs);
    EXPECT_THAT(*contents.fileIDs, testing::ElementsAre(-2, 0x1'0000'0001));
    EXPECT_EQ(contents.volume.capacity, -2);
    EXPECT_EQ(contents.userID, 0x1'0000'0001);
}

TEST(BookmarkContents, takeTheFormOfAnAliasFile) {
    const BookmarkContents contents = contentsForAliasFile(noteContents());
    EXPECT_EQ(contents.options, 0x400U);
    EXPECT_TRUE(contents.wasFileIDFormat);
    EXPECT_EQ(contents.displayName, "note.txt");
    EXPECT_EQ(contents.fileFlags, (BookmarkFlags{1, 0x0F, 0x0F}));
    EXPECT_EQ(contents.volume.flags, (BookmarkFlags{0x1'0000'0081, 0x1'0000'13EF, 0x1'0000'13EF}));
}

TEST(BookmarkContents, keepTheirDisplayNameInAnAliasFile) {
    EXPECT_EQ(contentsForAliasFile(shareContents()).displayName, shareContents().displayName);
    BookmarkContents root;
    root.pathComponents.emplace();
    root.fileName = "Test Disk";
    EXPECT_EQ(contentsForAliasFile(root).displayName, "Test Disk");
    EXPECT_EQ(contentsForAliasFile({}).displayName, std::nullopt);
}

} // namespace
} // namespace tolvane::platform
