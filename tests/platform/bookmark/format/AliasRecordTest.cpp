#include "platform/bookmark/format/AliasRecord.h"

#include "tests/platform/bookmark/Examples.h"
#include "tests/support/AliasRecords.h"
#include "tests/support/AppleDoubleFiles.h"

namespace tolvane::platform {
namespace {

using namespace tests;

AliasRecord aliasRead(const WrittenAlias& alias) {
    const Data bytes = writtenAlias(alias);
    const auto record = readAliasRecord(bytes);
    EXPECT_TRUE(record) << record.error().description();
    return record.value_or(AliasRecord());
}

std::string_view aliasFault(const Data& bytes) {
    const auto record = readAliasRecord(bytes);
    return record ? "nothing" : record.error().expected;
}

// AliasDescriptionTest has the rest of the fixed part.
TEST(AliasRecord, ofVersionTwoHasNamesInMacRoman) {
    WrittenAlias alias;
    alias.volume = "Caf\x8E";
    alias.name = "r\x8Esum\x8E";
    const AliasRecord record = aliasRead(alias);
    EXPECT_EQ(record.volumeName, "Caf\u00E9");
    EXPECT_EQ(record.fileName, "r\u00E9sum\u00E9");
    EXPECT_FALSE(record.creationDate.utc);
    EXPECT_FALSE(record.path());
    EXPECT_TRUE(record.warnings.empty());
}

TEST(AliasRecord, ofVersionThreeHasItsDatesInUTC) {
    WrittenAlias alias = noteAlias(3);
    alias.isFolder = true;
    const AliasRecord record = aliasRead(alias);
    EXPECT_EQ(record.version, 3);
    EXPECT_TRUE(record.isFolder);
    EXPECT_EQ(record.volumeName, "Disk");
    EXPECT_EQ(record.fileName, "note.txt");
    EXPECT_EQ(record.parentNumber, 20U);
    EXPECT_EQ(record.fileNumber, 30U);
    EXPECT_EQ(record.creationDate.utc->description(), "2018-01-28 16:00:00 +0000");
    EXPECT_FALSE(record.creationDate.local);
    EXPECT_EQ(record.volumeFlags, 0x0920U);
}

TEST(AliasRecord, hasWhatItsTagsTell) {
    WrittenAlias alias = noteAlias();
    alias.tags.emplace_back(16, dateTag(3'000'007'200));
    alias.tags.emplace_back(17, dateTag(3'600'007'200));
    alias.tags.emplace_back(21, std::string("\0\2", 2));
    const AliasRecord record = aliasRead(alias);
    EXPECT_EQ(record.folderName, "folder");
    EXPECT_EQ(record.parentNumbers, std::vector<std::uint32_t>{20});
    EXPECT_EQ(record.carbonPath, "Disk:folder:note.txt");
    EXPECT_EQ(record.posixPath, "/folder/note.txt");
    EXPECT_EQ(record.mountPoint, "/Volumes/Disk");
    EXPECT_EQ(record.path(), "/Volumes/Disk/folder/note.txt");
    EXPECT_EQ(record.homeLevels, 2);
    EXPECT_EQ(record.creationDate.utc->description(), "2018-01-28 18:00:00 +0000");
    EXPECT_EQ(record.volumeCreationDate.utc->description(), "1999-01-24 07:20:00 +0000");
    EXPECT_EQ(record.items.size(), alias.tags.size());
    EXPECT_EQ(record.items[0].offset, 150U);
}

TEST(AliasRecord, hasAPathFromTheRootOfItsVolume) {
    const auto pathWith = [](std::string below, std::string mountPoint) {
        WrittenAlias alias;
        alias.tags = {{18, std::move(below)}, {19, std::move(mountPoint)}};
        return aliasRead(alias).path();
    };
    EXPECT_EQ(pathWith("Applications/A.app", "/"), "/Applications/A.app");
    EXPECT_EQ(pathWith("/a", "/Volumes/Disk/"), "/Volumes/Disk/a");
    EXPECT_EQ(pathWith("", "/Volumes/Disk"), "/Volumes/Disk/");
    EXPECT_EQ(pathWith("", "/"), "/");
}

TEST(AliasRecord, hasNoNumbersWhereTheyAreAllOnes) {
    WrittenAlias alias;
    alias.parentNumber = 0xFFFF'FFFF;
    alias.number = 0xFFFF'FFFF;
    alias.time = 0;
    const AliasRecord record = aliasRead(alias);
    EXPECT_FALSE(record.parentNumber);
    EXPECT_FALSE(record.fileNumber);
    EXPECT_FALSE(record.creationDate.local);
}

TEST(AliasRecord, warnsOfWhatItCannotReadInATag) {
    WrittenAlias alias;
    alias.tags = {
        {14, unicodeTag("abc").substr(0, 5)}, {17, "1234"}, {20, "no alias"}, {21, "1"}, {77, "new"}};
    alias.hasEnd = false;
    const AliasRecord record = aliasRead(alias);
    EXPECT_EQ(record.fileName, "note.txt");
    EXPECT_FALSE(record.creationDate.utc);
    EXPECT_TRUE(record.diskImage.empty());
    EXPECT_FALSE(record.homeLevels);
    EXPECT_EQ(record.items.back().tag, 77);
    ASSERT_EQ(record.warnings.size(), 4U);
    EXPECT_EQ(record.warnings[0], (BookmarkWarning{150, "A name is shorter than it states."}));
    EXPECT_EQ(record.warnings[1].text, "A date does not have 8 bytes.");
    EXPECT_EQ(record.warnings[2].text, "The alias of the disk image cannot be read.");
    EXPECT_EQ(record.warnings[3].text, "The record has no end tag.");
}

TEST(AliasRecord, doesNotFollowDiskImagesWithoutEnd) {
    WrittenAlias alias;
    for (int i = 0; i < 20; ++i) {
        WrittenAlias outer;
        outer.tags = {{20, std::string(textOfBytes(writtenAlias(alias)))}};
        alias = outer;
    }
    AliasRecord record = aliasRead(alias);
    unsigned depth = 0;
    while (!record.diskImage.empty()) {
        AliasRecord inner = record.diskImage.front();
        record = std::move(inner);
        ++depth;
    }
    EXPECT_EQ(depth, deepestDiskImageAlias);
    ASSERT_EQ(record.warnings.size(), 1U);
}

TEST(AliasRecord, isRefusedUnlessWhole) {
    const Data bytes = writtenAlias(noteAlias());
    for (std::size_t count = 0; count < bytes.size(); ++count) {
        EXPECT_NE(aliasFault(front(bytes, count)), "nothing") << count;
        EXPECT_FALSE(isLikeAliasRecord(front(bytes, count))) << count;
    }
    EXPECT_EQ(aliasFault(bytes), "nothing");
    EXPECT_EQ(aliasFault(withByte(bytes, 7, 4)), "version 2 or 3 of an alias record");
    EXPECT_EQ(aliasFault(withByte(bytes, 9, 2)), "the kind of a file or folder");
    EXPECT_EQ(aliasFault(withByte(withByte(bytes, 4, 0), 5, 149)), "the length of an alias record");
    EXPECT_EQ(aliasFault(withByte(bytes, 10, 28)), "a name with room for it");
    EXPECT_EQ(aliasFault(withByte(bytes, 50, 64)), "a name with room for it");
    EXPECT_EQ(aliasFault(withByte(bytes, 152, 0xFF)), "a tag with its data within the record");
}

TEST(AliasRecord, isRecognisedByItsLengthAndVersion) {
    for (const unsigned version : {2U, 3U}) {
        Data bytes = writtenAlias(noteAlias(version));
        EXPECT_TRUE(isLikeAliasRecord(bytes));
        bytes.push_back(std::byte{0});
        EXPECT_FALSE(isLikeAliasRecord(bytes));
        EXPECT_EQ(aliasFault(bytes), "nothing") << "what follows is not read";
    }
}

} // namespace
} // namespace tolvane::platform
