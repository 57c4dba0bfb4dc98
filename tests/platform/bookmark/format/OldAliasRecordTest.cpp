#include "platform/bookmark/format/OldAliasRecord.h"

#include "platform/bookmark/format/BookmarkValues.h"
#include "platform/bookmark/format/BookmarkWriter.h"
#include "tests/platform/bookmark/Examples.h"
#include "tests/support/OldAliasFiles.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

using namespace tests;

TEST(OldAliasRecord, describesVersionKindAndVolume) {
    const auto record = oldAliasRecord(aliasBytes(2, 0, "Macintosh HD"));
    ASSERT_TRUE(record);
    EXPECT_EQ(*record, (OldAliasRecord{2, false, "Macintosh HD"}));
    EXPECT_EQ(record->description(), "old alias record, version 2, volume Macintosh HD");
    EXPECT_EQ(oldAliasRecord(aliasBytes(2, 1, "")), (OldAliasRecord{2, true, ""}));
}

TEST(OldAliasRecord, ofVersionThreeNamesNoVolume) {
    const auto record = oldAliasRecord(aliasBytes(3, 1, "Macintosh HD"));
    ASSERT_TRUE(record);
    EXPECT_EQ(*record, (OldAliasRecord{3, true, std::nullopt}));
    EXPECT_EQ(record->description(), "old alias record, version 3");
}

TEST(OldAliasRecord, readsVolumeNamesInTheMacsRomanEncoding) {
    const auto record = oldAliasRecord(aliasBytes(2, 0, "\x8ELa\x9B\xDB"));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->volumeName, "\u00E9La\u00F5\u20AC");
}

TEST(OldAliasRecord, isNotRecognisedInOtherBytes) {
    EXPECT_EQ(oldAliasRecord(aliasBytes(1, 0, "a")), std::nullopt);
    EXPECT_EQ(oldAliasRecord(aliasBytes(4, 0, "a")), std::nullopt);
    EXPECT_EQ(oldAliasRecord(aliasBytes(2, 2, "a")), std::nullopt);
    EXPECT_EQ(oldAliasRecord(aliasBytes(2, 0, std::string(28, 'a'))), std::nullopt) << "27 letters fit";
    EXPECT_NE(oldAliasRecord(aliasBytes(2, 0, std::string(27, 'a'))), std::nullopt);
    EXPECT_EQ(oldAliasRecord(withByte(aliasBytes(2, 0, "a"), 5, 151)), std::nullopt) << "too long";
    EXPECT_EQ(oldAliasRecord(withByte(aliasBytes(2, 0, "a"), 5, 9)), std::nullopt) << "too short";
    EXPECT_EQ(oldAliasRecord(withByte(aliasBytes(2, 0, "a"), 5, 37)), std::nullopt) << "no room for a name";
    EXPECT_NE(oldAliasRecord(withByte(aliasBytes(2, 0, "a"), 5, 38)), std::nullopt);
    const Data bytes = aliasBytes(2, 0, "a");
    for (std::size_t count = 0; count < bytes.size(); ++count) {
        EXPECT_EQ(oldAliasRecord(front(bytes, count)), std::nullopt) << count;
    }
}

TEST(OldAliasRecord, isTheResourceWithTheNumberZeroOrElseTheFirst) {
    const Resource one{1, aliasBytes(2, 0, "One")};
    const Resource two{2, aliasBytes(2, 0, "Two")};
    const Resource zero{0, aliasBytes(2, 0, "Zero")};
    EXPECT_EQ(oldAliasRecordInResourceFork(forkWith({one, zero, two})), (OldAliasRecord{2, false, "Zero"}));
    EXPECT_EQ(oldAliasRecordInResourceFork(forkWith({two, one}))->volumeName, "Two");
}

TEST(OldAliasRecord, isNotFoundInAForkWithoutOne) {
    Data fork = forkWith({{0, aliasBytes(2, 0, "Disk")}});
    const std::size_t map = fork.size() - 28 - 18 - 24;
    ASSERT_EQ(fork.at(map + 28 + 10), std::byte{'a'});
    EXPECT_EQ(oldAliasRecordInResourceFork(withByte(fork, map + 28 + 10, 'A')), std::nullopt);
    EXPECT_EQ(
        oldAliasRecordInResourceFork(withByte(withByte(fork, map + 28, 0xFF), map + 29, 0xFF)), std::nullopt)
        << "no types";
    EXPECT_EQ(oldAliasRecordInResourceFork({}), std::nullopt);
}

TEST(OldAliasRecord, isNotFoundInAForkThatIsCutOff) {
    const Data fork = forkWith({{0, aliasBytes(2, 0, "Disk")}});
    for (std::size_t count = 0; count < fork.size(); ++count) {
        EXPECT_EQ(oldAliasRecordInResourceFork(front(fork, count)), std::nullopt) << count;
    }
}

TEST(OldAliasRecord, isLookedForWithinTheForkWhateverItsBytes) {
    const Data fork = forkWith({{7, aliasBytes(2, 0, "Disk")}, {0, aliasBytes(2, 1, "Disk")}});
    std::size_t found = 0;
    for (std::size_t offset = 0; offset < fork.size(); ++offset) {
        for (const unsigned value : {0U, 1U, 0x7FU, 0x80U, 0xFEU, 0xFFU}) {
            found += oldAliasRecordInResourceFork(withByte(fork, offset, value)) ? 1U : 0U;
        }
    }
    EXPECT_GT(found, fork.size()) << "most bytes do not matter";
    EXPECT_LT(found, fork.size() * 6);
}

TEST(OldAliasRecord, isGivenWithAllBytesOfItsResource) {
    Data record = aliasBytes(2, 0, "Disk");
    record.resize(200, std::byte{7});
    const Data fork = forkWith({{0, record}});
    const auto resource = aliasResourceInFork(fork);
    ASSERT_TRUE(resource);
    EXPECT_EQ(Data(resource->begin(), resource->end()), record);
    EXPECT_EQ(aliasResourceInFork(front(fork, fork.size() - 1)), std::nullopt);
    EXPECT_TRUE(aliasResourceInFork(forkWith({{0, Data(3)}}))) << "its contents are not parsed";
}

TEST(OldAliasRecord, makesBookmarkDataThatHoldsItAlone) {
    for (const std::size_t length : {0U, 1U, 150U, 151U}) {
        Data record = aliasBytes(2, 0, "Disk");
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
        ASSERT_TRUE(value);
        EXPECT_EQ(*value, Value(record));
    }
}

} // namespace
} // namespace tolvane::platform
