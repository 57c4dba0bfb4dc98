#include "platform/bookmark/format/AliasBookmark.h"

#include "platform/bookmark/format/BookmarkValues.h"
#include "platform/bookmark/format/BookmarkWriter.h"
#include "tests/platform/bookmark/Examples.h"
#include "tests/support/AliasRecords.h"

namespace tolvane::platform {
namespace {

using namespace tests;
using namespace std::string_literals;

BookmarkContents contentsOf(const WrittenAlias& alias) {
    return contentsOfAliasRecord(readAliasRecord(writtenAlias(alias)).value());
}

using Names = std::vector<std::string>;
using Numbers = std::vector<std::optional<std::int64_t>>;

TEST(AliasBookmark, holdsTheRecordAlone) {
    for (const std::size_t length : {0U, 1U, 150U, 151U}) {
        Data record = writtenAlias(noteAlias());
        record.resize(length);
        const Data bytes = bookmarkOfAliasRecord(record);
        const BookmarkStructure structure = readWell(bytes);
        EXPECT_EQ(structure.header.container, BookmarkContainer::bareAlias);
        EXPECT_TRUE(structure.warnings.empty());
        EXPECT_EQ(bookmarkBytes(structure), bytes);
        ASSERT_EQ(structure.tables.size(), 1U);
        EXPECT_EQ(structure.tables[0].items.size(), 1U);
        const auto value =
            BookmarkItems(structure, table_identifier::target).value(bookmark_key::aliasRecord);
        EXPECT_EQ(value, Value(record));
        EXPECT_FALSE(aliasRecordIn(structure)) << "it has been cut or breaks off";
    }
    const Data whole = writtenAlias(noteAlias());
    EXPECT_EQ(aliasRecordIn(readWell(bookmarkOfAliasRecord(whole)))->fileName, "note.txt");
}

TEST(AliasBookmark, isReadFromTheRecordAndFromBookmarkData) {
    const Data record = writtenAlias(noteAlias(3));
    const auto structure = readBookmarkOrAlias(record);
    ASSERT_TRUE(structure);
    EXPECT_EQ(bookmarkBytes(*structure), bookmarkOfAliasRecord(record));
    EXPECT_TRUE(readBookmarkOrAlias(noteBookmark()));
    EXPECT_TRUE(readBookmarkOrAlias(noteAliasFile()));
    EXPECT_FALSE(readBookmarkOrAlias(front(record, record.size() - 1)));
}

TEST(AliasBookmark, hasThePathWithItsNumbersAndTheVolume) {
    for (const unsigned version : {2U, 3U}) {
        const BookmarkContents contents = contentsOf(noteAlias(version));
        EXPECT_EQ(contents.pathComponents, (Names{"Volumes", "Disk", "folder", "note.txt"}));
        EXPECT_EQ(contents.fileIDs, (Numbers{std::nullopt, std::nullopt, 20, 30}));
        EXPECT_EQ(contents.volume.path, "/Volumes/Disk");
        EXPECT_EQ(contents.volume.name, "Disk");
        EXPECT_FALSE(contents.volume.wasBoot);
        EXPECT_EQ(contents.displayName, "note.txt");
        EXPECT_EQ(contents.fileFlags, (BookmarkFlags{file_flag::regularFile, 7, 0}));
    }
}

TEST(AliasBookmark, hasDatesInUtcOrInLocalTime) {
    const BookmarkContents third = contentsOf(noteAlias(3));
    EXPECT_EQ(third.creationDate->description(), "2018-01-28 16:00:00 +0000");
    EXPECT_EQ(third.volume.creationDate->description(), "1999-01-24 05:20:00 +0000");
    EXPECT_FALSE(third.localCreationDate);
    EXPECT_FALSE(third.volume.localCreationDate);
    const BookmarkContents second = contentsOf(noteAlias(2));
    EXPECT_FALSE(second.creationDate);
    EXPECT_EQ(second.localCreationDate->description(), "2018-01-28 16:00:00 +0000");
    EXPECT_FALSE(second.volume.creationDate);
    EXPECT_EQ(second.volume.localCreationDate->description(), "1999-01-24 05:20:00 +0000");
    WrittenAlias dated = noteAlias(2);
    dated.tags = {{16, dateTag(3'000'003'600)}, {17, dateTag(3'600'003'600)}};
    const BookmarkContents both = contentsOf(dated);
    EXPECT_EQ(both.creationDate->description(), "2018-01-28 17:00:00 +0000");
    EXPECT_EQ(both.volume.creationDate->description(), "1999-01-24 06:20:00 +0000");
    EXPECT_FALSE(both.localCreationDate);
    EXPECT_FALSE(both.volume.localCreationDate);
}

TEST(AliasBookmark, ofAFolderOnTheVolumeOfTheSystemIsOne) {
    WrittenAlias alias = noteAlias();
    alias.isFolder = true;
    alias.tags = {{1, "\0\0\0\x14\0\0\0\x13\0\0\0\x02"s}, {18, "Users/demo/folder"}, {19, "/"}};
    const BookmarkContents contents = contentsOf(alias);
    EXPECT_EQ(contents.pathComponents, (Names{"Users", "demo", "folder"}));
    EXPECT_EQ(contents.fileIDs, (Numbers{19, 20, 30}));
    EXPECT_EQ(contents.volume.path, "/");
    EXPECT_TRUE(contents.volume.wasBoot);
    EXPECT_EQ(contents.fileFlags->values, file_flag::directory);
}

TEST(AliasBookmark, ofAVolumeEndsAtItsMountPoint) {
    WrittenAlias alias = noteAlias();
    alias.tags = {{18, "/"}, {19, "/Volumes/Disk"}};
    EXPECT_EQ(contentsOf(alias).pathComponents, (Names{"Volumes", "Disk"}));
    EXPECT_EQ(contentsOf(alias).fileIDs, Numbers(2));
}

TEST(AliasBookmark, hasTheCarbonPathWhereThereIsNoOther) {
    WrittenAlias alias = noteAlias();
    alias.tags = {{2, "Disk:a folder:9/11:"}};
    EXPECT_EQ(contentsOf(alias).pathComponents, (Names{"a folder", "9:11"}));
    EXPECT_EQ(contentsOf(alias).fileIDs, (Numbers{20, 30}));
    EXPECT_FALSE(contentsOf(alias).volume.path);
    alias.tags = {{2, "Disk:folder::other"}};
    EXPECT_FALSE(contentsOf(alias).pathComponents) << "a step upward";
    alias.tags = {};
    EXPECT_FALSE(contentsOf(alias).pathComponents);
}

TEST(AliasBookmark, hasNoPathOnAVolumeThatIsNotKnown) {
    WrittenAlias alias = noteAlias(3);
    alias.tags = {{18, "/folder/note.txt"}};
    EXPECT_FALSE(contentsOf(alias).pathComponents);
}

TEST(AliasBookmark, knowsNoNumbersThatAreNotStored) {
    WrittenAlias alias = noteAlias();
    alias.number = 0xFFFF'FFFF;
    alias.parentNumber = 0;
    alias.tags = {{18, "/folder/note.txt"}, {19, "/Volumes/Disk"}};
    EXPECT_EQ(contentsOf(alias).fileIDs, Numbers(4));
}

TEST(AliasBookmark, countsOnlyWhereTheBookmarkHasNoPathItself) {
    EXPECT_EQ(targetContents(readWell(noteBookmark())), noteContents());
    const auto alias = readBookmarkOrAlias(writtenAlias(noteAlias()));
    EXPECT_EQ(targetContents(alias.value()), contentsOf(noteAlias()));
    EXPECT_FALSE(bookmarkContents(alias.value()).pathComponents);
}

} // namespace
} // namespace tolvane::platform
