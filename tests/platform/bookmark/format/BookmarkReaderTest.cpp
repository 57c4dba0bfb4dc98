#include "platform/bookmark/format/BookmarkReader.h"

#include "platform/bookmark/format/BookmarkWriter.h"
#include "tests/platform/bookmark/Examples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace tolvane::platform {
namespace {

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

/// The fault in bytes that are not a bookmark, as "0x54: what was expected".
std::string faultIn(const Data& bytes) {
    const std::expected<BookmarkStructure, BookmarkFault> structure = readBookmark(bytes);
    if (structure) {
        return "none";
    }
    return std::to_string(structure.error().offset) + ": " + std::string(structure.error().expected);
}

std::string fault(std::size_t offset, const std::string& expected) {
    return std::to_string(offset) + ": " + expected;
}

constexpr std::size_t dataStart = 0x30;

TEST(BookmarkReader, takesABookmarkApart) {
    const BookmarkStructure structure = readWell(noteBookmark());
    EXPECT_EQ(structure.header.container, BookmarkContainer::bare);
    EXPECT_EQ(structure.header.version, 0x1004'0000U);
    EXPECT_EQ(structure.header.size, 48U);
    EXPECT_FALSE(structure.header.hasSecurityScopeKey());
    EXPECT_EQ(structure.section.size(), 600U);
    EXPECT_EQ(structure.leadingPadding, 0U);
    EXPECT_THAT(structure.trailing, IsEmpty());
    EXPECT_THAT(structure.warnings, IsEmpty());

    ASSERT_EQ(structure.tables.size(), 1U);
    const BookmarkTable& table = structure.tables.front();
    EXPECT_EQ(table.offset, 0x184U);
    EXPECT_EQ(table.byteCount, 0xCCU);
    EXPECT_EQ(table.identifier, 1U);
    EXPECT_EQ(table.nextOffset, 0U);
    ASSERT_EQ(table.items.size(), 16U);
    EXPECT_EQ(table.items.front().key, 0x1004U);
    EXPECT_EQ(table.items.front().valueOffset, 0x3CU);
    EXPECT_EQ(table.items.front().flags, 0U);

    ASSERT_EQ(structure.records.size(), 21U);
    const BookmarkRecord& users = structure.records.at(1);
    EXPECT_EQ(users.offset, 0x10U);
    EXPECT_EQ(users.type, record_type::string);
    EXPECT_EQ(users.paddingLength, 3U);
    EXPECT_EQ(structure.text(users), "Users");
}

TEST(BookmarkReader, takesAnAliasFileApart) {
    const BookmarkStructure structure = readWell(noteAliasFile());
    EXPECT_EQ(structure.header.container, BookmarkContainer::aliasFile);
    EXPECT_EQ(structure.header.size, 56U);
    EXPECT_EQ(structure.header.writtenDate(), Date(700'000'100.0));
    EXPECT_EQ(structure.section, readWell(noteBookmark()).section);
    EXPECT_THAT(structure.warnings, IsEmpty());
}

TEST(BookmarkReader, findsTablesByTheirIdentifier) {
    const Data bytes = noteBookmark();
    EXPECT_NE(readWell(bytes).table(1), nullptr);
    EXPECT_EQ(readWell(bytes).table(0xF000), nullptr);
    const BookmarkStructure other = readWell(withU32(bytes, dataStart + 0x184 + 8, 0xF000));
    EXPECT_EQ(other.table(1), nullptr);
    EXPECT_NE(other.table(0xF000), nullptr);
}

TEST(BookmarkReader, acceptsEveryTypeOfRecord) {
    HandmadeSection section;
    std::vector<BookmarkItem> items;
    std::uint32_t key = 1;
    const auto add = [&](std::uint32_t offset) {
        items.push_back({key++, offset, 0});
        return offset;
    };
    const std::uint32_t text = add(section.addText(record_type::string, "text"));
    add(section.addText(record_type::string, ""));
    add(section.addText(record_type::data, "bytes"));
    for (const auto& [type, width] :
         {std::pair{0x0301U, 1U},
          {0x0302U, 2U},
          {0x0303U, 4U},
          {0x0304U, 8U},
          {0x0305U, 4U},
          {0x0306U, 8U},
          {0x0300U, 5U}}) {
        add(section.add(type, Data(width)));
    }
    add(section.add(record_type::date, Data(8)));
    add(section.add(record_type::booleanFalse, {}));
    const std::uint32_t yes = add(section.add(record_type::booleanTrue, {}));
    add(section.addWords(record_type::array, {text, yes, text}));
    add(section.addWords(record_type::array, {}));
    add(section.addWords(record_type::dictionary, {text, yes}));
    add(section.add(record_type::uuid, Data(16)));
    const std::uint32_t url = add(section.addText(record_type::absoluteURL, "file:///"));
    const std::uint32_t relative = add(section.addWords(record_type::relativeURL, {url, text}));
    add(section.addWords(record_type::relativeURL, {relative, text}));
    add(section.add(record_type::null, {}));
    add(section.addText(0xABCD'EF01, "unknown"));
    const Data bytes = section.bookmark(items);
    const BookmarkStructure structure = readWell(bytes);
    EXPECT_EQ(structure.records.size(), items.size());
    EXPECT_THAT(structure.warnings, IsEmpty());
    EXPECT_EQ(bookmarkBytes(structure), bytes);
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

TEST(BookmarkReader, warnsOfRecordsThatNothingLeadsTo) {
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

TEST(BookmarkReader, refusesOtherBytes) {
    const std::string letters = R"(the letters "book" or "alis")";
    EXPECT_EQ(faultIn({}), fault(0, letters));
    EXPECT_EQ(faultIn(front(noteBookmark(), 3)), fault(0, letters));
    EXPECT_EQ(faultIn(withByte(noteBookmark(), 3, 'K')), fault(0, letters));
    EXPECT_EQ(faultIn(withByte(noteBookmark(), 0, 'B')), fault(0, letters));
}

TEST(BookmarkReader, refusesHeadersThatAreNotWhole) {
    EXPECT_EQ(faultIn(front(noteBookmark(), 4)), fault(4, "a header of 48 bytes"));
    EXPECT_EQ(faultIn(front(noteAliasFile(), 16)), fault(16, "a header of 56 bytes"));
}

TEST(BookmarkReader, refusesSizesThatDoNotFit) {
    const Data bare = noteBookmark();
    for (const std::uint32_t size : {649U, 0xFFFF'FFFFU}) {
        EXPECT_EQ(faultIn(withU32(bare, 4, size)), fault(4, "a total size within the bytes that are there"));
    }
    for (const std::uint32_t size : {0U, 47U, 649U, 0xFFFF'FFFFU}) {
        EXPECT_EQ(faultIn(withU32(bare, 12, size)), fault(12, "a header size from 48 to the total size"));
    }
    EXPECT_EQ(faultIn(withU32(bare, 4, 47)), fault(12, "a header size from 48 to the total size"));
    EXPECT_EQ(faultIn(withU32(bare, 4, 51)), fault(4, "a total size with room for the data section"));
    EXPECT_EQ(
        faultIn(withU32(bare, 4, 52)), fault(dataStart, "the offset of a table of contents within the data"));

    const Data aliasFile = noteAliasFile();
    for (const std::uint32_t size : {0U, 55U, 657U, 0xFFFF'FFFFU}) {
        EXPECT_EQ(
            faultIn(withU32(aliasFile, 16, size)),
            fault(16, "a header size from 56 to the size of the file"));
    }
    for (const std::uint32_t size : {601U, 0xFFFF'FFFFU}) {
        EXPECT_EQ(
            faultIn(withU32(aliasFile, 24, size)),
            fault(24, "a length of the data section within the bytes that are there"));
    }
    EXPECT_EQ(
        faultIn(withU32(aliasFile, 24, 3)),
        fault(24, "a length of the data section from 4 bytes to 4 GiB less the header"));
}

TEST(BookmarkReader, refusesOtherBytesAsTables) {
    const Data bytes = noteBookmark();
    for (const std::uint32_t offset : {0U, 3U, 581U, 600U, 601U, 0xFFFF'FFF0U, 0xFFFF'FFFFU}) {
        EXPECT_EQ(
            faultIn(withU32(bytes, dataStart, offset)),
            fault(dataStart, "the offset of a table of contents within the data"));
    }
    EXPECT_EQ(
        faultIn(withU32(bytes, dataStart, 0x10)),
        fault(dataStart + 0x14, "the type 0xFFFFFFFE of a table of contents"));
    for (const std::uint32_t count : {17U, 0x1555'5556U, 0xFFFF'FFFFU}) {
        EXPECT_EQ(
            faultIn(withU32(bytes, dataStart + 0x184 + 16, count)),
            fault(dataStart + 0x184 + 16, "no more items than the data has room for"));
    }
}

TEST(BookmarkReader, refusesChainsOfTablesThatLoop) {
    HandmadeSection section;
    const std::uint32_t first = section.addTable(1, 24, {});
    const std::uint32_t second = section.addTable(2, first, {});
    ASSERT_EQ(second, 24U);
    EXPECT_EQ(
        faultIn(section.bookmarkWithTable(first)),
        fault(dataStart + second + 12, "a chain of tables of contents that does not loop"));
}

TEST(BookmarkReader, refusesOffsetsThatLeadOutOfTheData) {
    const Data bytes = noteBookmark();
    const std::size_t place = dataStart + 0x184 + 20 + 4;
    for (const std::uint32_t offset : {0U, 3U, 593U, 600U, 0x8000'0000U, 0xFFFF'FFF8U, 0xFFFF'FFFFU}) {
        EXPECT_EQ(
            faultIn(withU32(bytes, place, offset)), fault(place, "the offset of a record within the data"));
        EXPECT_EQ(
            faultIn(withU32(bytes, dataStart + 0x44, offset)),
            fault(dataStart + 0x44, "the offset of a record within the data"))
            << "as an element of an array";
    }
    EXPECT_EQ(
        faultIn(withU32(bytes, place, 0x184)),
        fault(place, "the offset of a record, not of a table of contents"));
}

TEST(BookmarkReader, refusesRecordsThatRunPastTheEnd) {
    const Data bytes = noteBookmark();
    for (const std::uint32_t length : {600U - 0x10 - 8 + 1, 0xFFFF'FFF0U, 0xFFFF'FFFFU}) {
        EXPECT_EQ(
            faultIn(withU32(bytes, dataStart + 0x10, length)),
            fault(dataStart + 0x10, "the length of a record that ends within the data"));
    }
}

TEST(BookmarkReader, refusesRecordsThatShareBytes) {
    EXPECT_EQ(
        faultIn(withU32(noteBookmark(), dataStart + 0x10, 9)),
        fault(dataStart + 0x20, "a record that shares no bytes with another"));
    // An offset into the middle of another record, where a length and a type can be read.
    HandmadeSection section;
    const std::uint32_t outer = section.addWords(record_type::data, {4, record_type::data, 0});
    EXPECT_EQ(
        faultIn(section.bookmark({{1, outer, 0}, {2, outer + 8, 0}})),
        fault(dataStart + outer + 8, "a record that shares no bytes with another"));
}

TEST(BookmarkReader, refusesValuesThatHoldEachOther) {
    const std::string words = "an offset that does not lead back to the record holding it";
    HandmadeSection roundabout;
    const std::uint32_t key = roundabout.addText(record_type::string, "key!");
    const std::uint32_t inner = roundabout.addWords(record_type::array, {key, 32});
    const std::uint32_t outer = roundabout.addWords(record_type::dictionary, {key, inner});
    ASSERT_EQ(outer, 32U);
    EXPECT_EQ(faultIn(roundabout.bookmark({{1, inner, 0}})), fault(dataStart + outer + 12, words));
    EXPECT_EQ(faultIn(roundabout.bookmark({{1, outer, 0}})), fault(dataStart + inner + 12, words));
}

/// A chain of arrays, each holding the one before, and the offsets of all.
struct Nest {
    HandmadeSection section;
    std::vector<std::uint32_t> levels;

    explicit Nest(std::size_t depth) {
        levels.push_back(section.add(record_type::null, {}));
        while (levels.size() < depth) {
            levels.push_back(section.addWords(record_type::array, {levels.back()}));
        }
    }
};

TEST(BookmarkReader, followsValuesSixteenLevelsDeepAndNoDeeper) {
    Nest deep(16);
    EXPECT_EQ(faultIn(deep.section.bookmark({{1, deep.levels.back(), 0}})), "none");

    Nest deeper(17);
    EXPECT_EQ(
        faultIn(deeper.section.bookmark({{1, deeper.levels.back(), 0}})),
        fault(dataStart + deeper.levels[1] + 8, "values at most 16 deep"));
}

TEST(BookmarkReader, countsTheDepthOfSharedValuesWhereverTheyStand) {
    Nest nest(17);
    // Ten levels are read first, and then met again below seven more.
    EXPECT_EQ(
        faultIn(nest.section.bookmark({{1, nest.levels[9], 0}, {2, nest.levels[16], 0}})),
        fault(dataStart + nest.levels[10] + 8, "values at most 16 deep"));
    EXPECT_EQ(faultIn(nest.section.bookmark({{1, nest.levels[9], 0}, {2, nest.levels[15], 0}})), "none");
}

TEST(BookmarkReader, refusesTextThatIsNotUtf8) {
    EXPECT_EQ(
        faultIn(withByte(noteBookmark(), dataStart + 0xEA, 0xC3)), fault(dataStart + 0xE8, "text in UTF-8"));
}

TEST(BookmarkReader, refusesRelativeURLsOfAnyOtherLength) {
    for (const std::size_t length : {0U, 4U, 12U}) {
        HandmadeSection section;
        EXPECT_EQ(
            faultIn(section.bookmark({{1, section.add(record_type::relativeURL, Data(length)), 0}})),
            fault(dataStart + 4, "a relative URL of two offsets"));
    }
}

TEST(BookmarkReader, refusesPartsOfTheWrongKind) {
    HandmadeSection section;
    const std::uint32_t number = section.addWords(record_type::int32, {1});
    const std::uint32_t text = section.addText(record_type::string, "text");
    const std::uint32_t url = section.addText(record_type::absoluteURL, "a:b");
    const std::uint32_t dictionary = section.addWords(record_type::dictionary, {text, number, number, text});
    const std::uint32_t wrongBase = section.addWords(record_type::relativeURL, {text, text});
    const std::uint32_t wrongPart = section.addWords(record_type::relativeURL, {url, url});
    const auto faultOf = [&](std::uint32_t offset) {
        return faultIn(HandmadeSection(section).bookmark({{1, offset, 0}}));
    };
    EXPECT_EQ(
        faultOf(dictionary),
        fault(dataStart + dictionary + 16, "the offset of a string as the key of a dictionary"));
    EXPECT_EQ(
        faultOf(wrongBase), fault(dataStart + wrongBase + 8, "the offset of a URL as the base of another"));
    EXPECT_EQ(
        faultOf(wrongPart),
        fault(dataStart + wrongPart + 12, "the offset of a string as the relative part of a URL"));
}

TEST(BookmarkReader, refusesKeysWhoseNameIsNowhere) {
    HandmadeSection section;
    const std::uint32_t number = section.addWords(record_type::int32, {1});
    const std::size_t items = section.end() + 20;
    EXPECT_EQ(
        faultIn(section.bookmark({{0xFFFF'FFFFU, number, 0}})),
        fault(dataStart + items, "the offset of a record within the data"));
}

} // namespace
} // namespace tolvane::platform
