#include "platform/bookmark/format/BookmarkSalvage.h"

#include "platform/bookmark/description/SalvageDescription.h"
#include "tests/platform/bookmark/Examples.h"

namespace tolvane::platform {
namespace {

using namespace tests;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

// The bookmark has its header of 48 bytes, records up to 0x180 and its table at 0x184, which ends at 0x258.

SalvagedBookmark salvagedOf(const Data& bytes) {
    const auto salvaged = salvageBookmark(bytes);
    EXPECT_TRUE(salvaged) << salvaged.error().description();
    return salvaged.value_or(SalvagedBookmark());
}

TEST(BookmarkSalvage, keepsEveryRecordInFrontOfTheCut) {
    const BookmarkStructure whole = readWell(noteBookmark());
    const std::size_t length = whole.section.size();
    for (std::size_t there = 8; there < length; ++there) {
        const SalvagedBookmark salvaged = salvagedOf(front(noteBookmark(), 48 + there));
        std::size_t expected = 0;
        for (const BookmarkRecord& record : whole.records) {
            expected += record.offset + 8 + record.length <= there ? 1U : 0U;
        }
        ASSERT_EQ(salvaged.structure.records.size(), expected) << there;
        for (std::size_t i = 0; i < expected; ++i) {
            EXPECT_EQ(salvaged.structure.records[i].offset, whole.records[i].offset);
            EXPECT_EQ(salvaged.structure.records[i].type, whole.records[i].type);
        }
        ASSERT_FALSE(salvaged.missing.empty());
        EXPECT_EQ(salvaged.missing.back(), (MissingBytes{there, length - there, true}));
        EXPECT_EQ(salvaged.statedSectionLength, length);
        EXPECT_EQ(salvaged.firstTableOffset, whole.tables[0].offset);
    }
}

TEST(BookmarkSalvage, keepsTheItemsOfATableThatAreWhole) {
    const BookmarkStructure whole = readWell(noteBookmark());
    const std::size_t table = whole.tables[0].offset;
    const SalvagedBookmark salvaged = salvagedOf(front(noteBookmark(), 48 + table + 20 + 3 * 12 + 5));
    ASSERT_EQ(salvaged.structure.tables.size(), 1U);
    ASSERT_EQ(salvaged.structure.tables[0].items.size(), 3U);
    EXPECT_EQ(salvaged.structure.tables[0].items[2].key, whole.tables[0].items[2].key);
    EXPECT_EQ(salvaged.missing.front(), (MissingBytes{table + 20 + 3 * 12, 5, false}));
    EXPECT_TRUE(salvagedOf(front(noteBookmark(), 48 + table + 19)).structure.tables.empty());
}

TEST(BookmarkSalvage, goesOnBehindWhatIsDamaged) {
    const BookmarkStructure whole = readWell(noteBookmark());
    const BookmarkRecord& second = whole.records[1];
    const Data damaged = withU32(noteBookmark(), 48 + second.offset + 4, 0xABCD'EF01);
    auto salvaged = salvagedOf(withU32(damaged, 48 + whole.tables[0].offset + 4, 0));
    EXPECT_EQ(salvaged.structure.records.size(), whole.records.size() - 1);
    EXPECT_EQ(salvaged.missing.front().offset, second.offset);
    EXPECT_EQ(salvaged.missing.size(), 2U);
    EXPECT_FALSE(salvaged.missing.back().isBeyondEnd);
}

TEST(BookmarkSalvage, takesNothingForARecordThatHasNotTheLengthOfItsType) {
    HandmadeSection section;
    section.add(record_type::int32, Data(3));
    section.add(record_type::uuid, Data(15));
    section.add(record_type::array, Data(2));
    section.addText(record_type::string, "\xFF");
    const std::uint32_t good = section.addText(record_type::string, "good");
    const SalvagedBookmark salvaged = salvagedOf(section.bookmark({{1, 0x7FFF, 0}}));
    ASSERT_EQ(salvaged.structure.records.size(), 1U);
    EXPECT_EQ(salvaged.structure.records[0].offset, good);
    EXPECT_EQ(salvaged.structure.tables.size(), 1U);
}

TEST(BookmarkSalvage, isOfAliasFilesToo) {
    const Data file = noteAliasFile();
    const SalvagedBookmark salvaged = salvagedOf(front(file, file.size() - 40));
    EXPECT_TRUE(salvaged.structure.header.isAliasFile());
    EXPECT_EQ(salvaged.structure.records.size(), readWell(file).records.size());
    EXPECT_EQ(salvaged.missing.back().length, 40U);
}

TEST(BookmarkSalvage, isRefusedWhereNothingIsBrokenOrNothingIsThere) {
    EXPECT_EQ(salvageBookmark(noteBookmark()).error().expected, "a bookmark that is cut short or damaged");
    for (std::size_t there = 0; there < 52; ++there) {
        EXPECT_FALSE(salvageBookmark(front(noteBookmark(), there))) << there;
    }
    EXPECT_FALSE(salvageBookmark(withByte(noteBookmark(), 0, 'x')));
    EXPECT_FALSE(salvageBookmark(withU32(noteBookmark(), 12, 0xFFFF)));
}

TEST(BookmarkSalvage, isDescribedLineByLine) {
    const std::string text = salvageDescription(salvagedOf(front(noteBookmark(), 48 + 0x40)));
    EXPECT_THAT(
        text, StartsWith("Not a readable bookmark: expected a total size within the bytes that are there at "
                         "byte 4.\nSalvaged: 64 of 600 bytes, version 0x10040000, data at 0x30\n"
                         "0x4) int32:\"536870912\"\n0x10) string:\"Users\"\n"));
    EXPECT_THAT(
        text, EndsWith("\nMissing: 536 bytes at 0x40, which are not there\nMissing: the table of "
                       "contents at 0x184, so what the values are is not known"));
    const std::string more = salvageDescription(salvagedOf(front(noteBookmark(), 648 - 4)));
    EXPECT_THAT(more, HasSubstr("array:\"( 0x"));
    EXPECT_THAT(more, HasSubstr("\n0) itemType=0x1004 flags=0x0 dataOffset=0x3c pathComponents\n"));
    EXPECT_THAT(more, HasSubstr("\nMissing: 8 bytes at 0x24c, in which nothing is whole\n"));
}

TEST(BookmarkSalvage, marksItemsWhoseValueIsMissing) {
    HandmadeSection section;
    const std::uint32_t name = section.addText(record_type::string, "a\nb");
    EXPECT_THAT(
        salvageDescription(salvagedOf(section.bookmark({{0x8000'0000U | name, 0x7FFF, 0}}))),
        HasSubstr("dataOffset=0x7fff a\\nb (missing)"));
}

TEST(BookmarkSalvage, describesTheBytesOfABrokenBookmarkAndOfNoOther) {
    const Data broken = front(noteBookmark(), 648 - 4);
    EXPECT_EQ(describeSalvaged(broken), salvageDescription(salvagedOf(broken)));
    EXPECT_FALSE(describeSalvaged(noteBookmark()));
    EXPECT_TRUE(
        describeSalvaged(front(noteBookmark(), 4)).error().localizedDescription().starts_with("expected "));
}

} // namespace
} // namespace tolvane::platform
