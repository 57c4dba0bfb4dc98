#include "platform/bookmark/format/BookmarkReader.h"

#include "platform/bookmark/format/BookmarkWriter.h"
#include "tests/platform/bookmark/Examples.h"

namespace tolvane::platform {
namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

void expectFault(const Data& bytes, std::size_t offset, std::string_view expected) {
    const std::expected<BookmarkStructure, BookmarkFault> structure = readBookmark(bytes);
    ASSERT_FALSE(structure) << "it is a bookmark; expected " << expected << " at " << offset;
    EXPECT_EQ(structure.error(), (BookmarkFault{offset, expected}))
        << "at " << structure.error().offset << ": " << structure.error().expected;
}

/// For each of the words in place of the one at `place`, which is the fault's.
void expectFaultOfWords(
    const Data& bytes,
    std::size_t place,
    std::initializer_list<std::uint32_t> words,
    std::string_view expected) {
    for (const std::uint32_t word : words) {
        SCOPED_TRACE(word);
        expectFault(withU32(bytes, place, word), place, expected);
    }
}

constexpr std::size_t dataStart = 0x30;

// BookmarkDescriptionTest has the tables and items of this one, and the header of the alias file.
TEST(BookmarkReader, parsesABookmark) {
    const BookmarkStructure structure = readWell(noteBookmark());
    EXPECT_EQ(structure.header.container, BookmarkContainer::bare);
    EXPECT_FALSE(structure.header.hasSecurityScopeKey());
    EXPECT_EQ(structure.section.size(), 600U);
    EXPECT_EQ(structure.leadingPadding, 0U);
    EXPECT_THAT(structure.trailing, IsEmpty());
    EXPECT_EQ(structure.tables.at(0).byteCount, 0xCCU);
    ASSERT_EQ(structure.records.size(), 21U);
    const BookmarkRecord& users = structure.records.at(1);
    EXPECT_EQ(users.offset, 0x10U);
    EXPECT_EQ(users.type, record_type::string);
    EXPECT_EQ(users.paddingLength, 3U);
    EXPECT_EQ(structure.text(users), "Users");
}

TEST(BookmarkReader, followsTheChainOfTables) {
    HandmadeSection section;
    const std::uint32_t yes = section.add(record_type::booleanTrue, {});
    const std::uint32_t third = section.addTable(0x0FA0, 0, {{5, yes, 0}});
    const std::uint32_t second = section.addTable(0xF000, third, {});
    const std::uint32_t first = section.addTable(1, second, {{3, yes, 0}, {4, yes, 9}});
    const Data bytes = section.bookmarkWithTable(first);
    const BookmarkStructure structure = readWell(bytes);
    ASSERT_EQ(structure.tables.size(), 3U);
    EXPECT_EQ(structure.tables[1].offset, second);
    EXPECT_EQ(structure.table(0x0FA0)->items.size(), 1U);
    EXPECT_EQ(structure.table(0x0FA1), nullptr);
    EXPECT_EQ(structure.table(1)->find(4)->flags, 9U);
    EXPECT_EQ(bookmarkBytes(structure), bytes);
}

TEST(BookmarkReader, readsTablesBetweenRecordsInAnyOrder) {
    HandmadeSection section;
    const std::uint32_t table = section.addTable(1, 0, {{3, 36, 0}, {4, 44, 0}});
    ASSERT_EQ(section.end(), 48U);
    const std::uint32_t yes = section.add(record_type::booleanTrue, {});
    const std::uint32_t array = section.addWords(record_type::array, {yes});
    Data bytes = section.bookmarkWithTable(table);
    bytes = withU32(withU32(bytes, dataStart + table + 24, array), dataStart + table + 36, yes);
    const BookmarkStructure structure = readWell(bytes);
    EXPECT_THAT(structure.warnings, IsEmpty());
    EXPECT_EQ(bookmarkBytes(structure), bytes);
}

TEST(BookmarkReader, keepsRecordsApartThatStartAtOddOffsets) {
    HandmadeSection section;
    Data bytes(3 + 3 * 8);
    for (const std::size_t start : {3U, 11U, 19U}) {
        bytes = withU32(bytes, start + 4, record_type::booleanTrue);
    }
    const std::uint32_t data = section.add(record_type::data, bytes) + 8;
    const BookmarkStructure structure = readWell(
        section.bookmark({{1, data + 3, 0}, {2, data + 11, 0}, {3, data + 19, 0}, {4, data + 3, 0}}));
    ASSERT_EQ(structure.records.size(), 3U);
    for (std::uint32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(structure.records[i].offset, data + 3 + 8 * i);
    }
}

TEST(BookmarkReader, warnsOfOdditiesAndReadsOn) {
    const auto warningsOf = [](const Data& bytes) { return readWell(bytes).warnings; };
    EXPECT_THAT(
        warningsOf(withU32(noteAliasFile(), 28, 0)),
        ElementsAre(BookmarkWarning{28, "the version word is not 0x10040000"}));
    EXPECT_THAT(
        warningsOf(withU32(noteAliasFile(), 20, 48)),
        ElementsAre(BookmarkWarning{20, "the header size is not repeated"}));
    EXPECT_THAT(
        warningsOf(withByte(noteBookmark(), dataStart + 0x1D, 1)),
        ElementsAre(BookmarkWarning{dataStart + 0x1D, "no offset leads to these bytes"}));
}

TEST(BookmarkReader, warnsOfRecordsThatNoOffsetLeadsTo) {
    HandmadeSection section;
    section.addText(record_type::string, "lost");
    const std::uint32_t yes = section.add(record_type::booleanTrue, {});
    section.addText(record_type::string, "lost too");
    const Data bytes = section.bookmark({{3, yes, 0}});
    const BookmarkStructure structure = readWell(bytes);
    EXPECT_EQ(structure.leadingPadding, 12U);
    EXPECT_EQ(structure.records.front().paddingLength, 16U);
    EXPECT_THAT(
        structure.warnings, ElementsAre(BookmarkWarning{dataStart + 4, "no offset leads to these bytes"}));
    EXPECT_EQ(bookmarkBytes(structure), bytes);
}

// BookmarkCorpusTest has one bookmark for each fault; these are the others of its kind.

TEST(BookmarkReader, refusesOtherBytes) {
    for (const Data& bytes :
         {front(noteBookmark(), 3), withByte(noteBookmark(), 3, 'K'), withByte(noteBookmark(), 0, 'B')}) {
        expectFault(bytes, 0, R"(the letters "book" or "alis")");
    }
    expectFault(front(noteBookmark(), 4), 4, "a header of 48 bytes");
    expectFault(front(noteAliasFile(), 16), 16, "a header of 56 bytes");
}

TEST(BookmarkReader, refusesSizesThatDoNotFit) {
    const Data bare = noteBookmark();
    expectFaultOfWords(bare, 4, {649, 0xFFFF'FFFF}, "a total size within the bytes that are there");
    expectFaultOfWords(bare, 12, {0, 47, 649, 0xFFFF'FFFF}, "a header size from 48 to the total size");
    expectFault(withU32(bare, 4, 47), 12, "a header size from 48 to the total size");
    expectFaultOfWords(bare, 4, {51}, "a total size with room for the data section");
    expectFault(withU32(bare, 4, 52), dataStart, "the offset of a table of contents within the data");

    const Data aliasFile = noteAliasFile();
    expectFaultOfWords(
        aliasFile, 16, {0, 55, 657, 0xFFFF'FFFF}, "a header size from 56 to the size of the file");
    expectFaultOfWords(
        aliasFile, 24, {601, 0xFFFF'FFFF}, "a length of the data section within the bytes that are there");
    expectFaultOfWords(
        aliasFile, 24, {3}, "a length of the data section from 4 bytes to 4 GiB less the header");
}

TEST(BookmarkReader, refusesOtherBytesAsTables) {
    const Data bytes = noteBookmark();
    expectFaultOfWords(
        bytes, dataStart, {0, 3, 581, 600, 601, 0xFFFF'FFF0, 0xFFFF'FFFF},
        "the offset of a table of contents within the data");
    expectFault(
        withU32(bytes, dataStart, 0x10), dataStart + 0x14, "the type 0xFFFFFFFE of a table of contents");
    expectFaultOfWords(
        bytes, dataStart + 0x194, {17, 0x1555'5556, 0xFFFF'FFFF}, "no more items than the data has room for");
}

TEST(BookmarkReader, refusesChainsOfTablesThatLoop) {
    HandmadeSection section;
    const std::uint32_t first = section.addTable(1, 24, {});
    const std::uint32_t second = section.addTable(2, first, {});
    ASSERT_EQ(second, 24U);
    expectFault(
        section.bookmarkWithTable(first), dataStart + second + 12,
        "a chain of tables of contents that does not loop");
}

TEST(BookmarkReader, refusesOffsetsThatLeadOutOfTheData) {
    const Data bytes = noteBookmark();
    const std::size_t ofItem = dataStart + 0x184 + 20 + 4;
    const std::size_t ofElement = dataStart + 0x44;
    for (const std::size_t place : {ofItem, ofElement}) {
        expectFaultOfWords(
            bytes, place, {0, 3, 593, 600, 0x8000'0000, 0xFFFF'FFF8, 0xFFFF'FFFF},
            "the offset of a record within the data");
    }
    expectFaultOfWords(bytes, ofItem, {0x184}, "the offset of a record, not of a table of contents");
    HandmadeSection section;
    const std::uint32_t number = section.addWords(record_type::int32, {1});
    const std::size_t ofName = dataStart + section.end() + 20;
    expectFault(
        section.bookmark({{0xFFFF'FFFFU, number, 0}}), ofName, "the offset of a record within the data");
}

TEST(BookmarkReader, refusesRecordsThatRunPastTheEnd) {
    expectFaultOfWords(
        noteBookmark(), dataStart + 0x10, {600 - 0x10 - 8 + 1, 0xFFFF'FFF0, 0xFFFF'FFFF},
        "the length of a record that ends within the data");
}

TEST(BookmarkReader, refusesRecordsWithinOthers) {
    // An offset into the middle of another record, where a length and a type can be read.
    HandmadeSection section;
    const std::uint32_t outer = section.addWords(record_type::data, {4, record_type::data, 0});
    expectFault(
        section.bookmark({{1, outer, 0}, {2, outer + 8, 0}}), dataStart + outer + 8,
        "a record that shares no bytes with another");
}

TEST(BookmarkReader, refusesValuesThatContainEachOther) {
    HandmadeSection roundabout;
    const std::uint32_t key = roundabout.addText(record_type::string, "key!");
    const std::uint32_t inner = roundabout.addWords(record_type::array, {key, 32});
    const std::uint32_t outer = roundabout.addWords(record_type::dictionary, {key, inner});
    ASSERT_EQ(outer, 32U);
    expectFault(
        roundabout.bookmark({{1, inner, 0}}), dataStart + outer + 12,
        "an offset that does not lead back to the record holding it");
}

TEST(BookmarkReader, followsValuesSixteenLevelsDeepAndNoDeeper) {
    HandmadeSection section;
    std::vector<std::uint32_t> levels{section.add(record_type::null, {})};
    while (levels.size() < 17) {
        levels.push_back(section.addWords(record_type::array, {levels.back()}));
    }
    const auto bookmarkOf = [&](const std::vector<BookmarkItem>& items) {
        return HandmadeSection(section).bookmark(items);
    };
    readWell(bookmarkOf({{1, levels[15], 0}}));
    expectFault(bookmarkOf({{1, levels[16], 0}}), dataStart + levels[1] + 8, "values at most 16 deep");
    // Ten levels are read first, and then met again below six or seven more.
    readWell(bookmarkOf({{1, levels[9], 0}, {2, levels[15], 0}}));
    expectFault(
        bookmarkOf({{1, levels[9], 0}, {2, levels[16], 0}}), dataStart + levels[10] + 8,
        "values at most 16 deep");
}

TEST(BookmarkReader, refusesAURLThatIsNotUtf8) {
    expectFault(withByte(noteBookmark(), dataStart + 0xEA, 0xC3), dataStart + 0xE8, "text in UTF-8");
}

TEST(BookmarkReader, refusesRelativeURLsOfAnyOtherLength) {
    for (const std::size_t length : {0U, 4U, 12U}) {
        HandmadeSection section;
        const std::uint32_t url = section.add(record_type::relativeURL, Data(length));
        expectFault(section.bookmark({{1, url, 0}}), dataStart + 4, "a relative URL of two offsets");
    }
}

TEST(BookmarkReader, refusesANumberAsTheSecondKeyOfADictionary) {
    HandmadeSection section;
    const std::uint32_t number = section.addWords(record_type::int32, {1});
    const std::uint32_t text = section.addText(record_type::string, "text");
    const std::uint32_t dictionary = section.addWords(record_type::dictionary, {text, number, number, text});
    expectFault(
        section.bookmark({{1, dictionary, 0}}), dataStart + dictionary + 16,
        "the offset of a string as the key of a dictionary");
}

} // namespace
} // namespace tolvane::platform
