#include "platform/bookmark/description/BookmarkDescription.h"

#include "platform/bookmark/format/BookmarkComposer.h"
#include "tests/platform/bookmark/Examples.h"

#include <algorithm>

namespace tolvane::platform {
namespace {

using namespace tests;
using testing::HasSubstr;

/// The lines from the first item on.
std::string itemsOf(const Data& bytes) {
    const std::string text = bookmarkDetailedDescription(readWell(bytes));
    return text.substr(text.find("\n0) ") + 1);
}

/// The description of the only value of a bookmark, without the quotation marks around it.
std::string describedValue(HandmadeSection& section, std::uint32_t offset) {
    const std::string item = itemsOf(section.bookmark({{0x9999, offset, 0}}));
    const std::size_t begin = item.find(":\"") + 2;
    return item.substr(begin, item.size() - begin - 1);
}

std::string describedRecord(std::uint32_t type, std::string_view digits) {
    HandmadeSection section;
    return describedValue(section, section.add(type, dataOfHex(digits)));
}

std::string describedText(std::string_view text) {
    HandmadeSection section;
    return describedValue(section, section.addText(record_type::string, text));
}

/// The description of a text within an array.
std::string describedElement(std::string_view text) {
    HandmadeSection section;
    const std::uint32_t element = section.addText(record_type::string, text);
    return describedValue(section, section.addWords(record_type::array, {element}));
}

TEST(BookmarkDescription, listsContainerTableAndItemsLineByLine) {
    EXPECT_EQ(
        bookmarkDetailedDescription(readWell(noteBookmark())),
        R"text(Bookmark data: 648 bytes, version 0x10040000, data at 0x30
TOC at 0x184: level=1 nextTOC=0x0 items=16
0) itemType=0x1004 flags=0x0 dataOffset=0x3c pathComponents:"( Users, demo, note.txt )"
1) itemType=0x1005 flags=0x0 dataOffset=0x80 fileIDs:"( 21327, 412345, 412399 )"
2) itemType=0x1010 flags=0x0 dataOffset=0xa4 resourceProps:"{ flags=0x1 valid=0xf requested=0x0 }"
3) itemType=0x1040 flags=0x0 dataOffset=0x94 creationDate:"2023-03-08 20:26:40 +0000"
4) itemType=0x2002 flags=0x0 dataOffset=0x170 volPath:"/"
5) itemType=0x2005 flags=0x0 dataOffset=0xe0 volURL:"{string = file:///, encoding = 134217984, base = (null)}"
6) itemType=0x2010 flags=0x0 dataOffset=0xf0 volName:"Test Disk"
7) itemType=0x2011 flags=0x0 dataOffset=0x124 volUUID:"11111111-2222-3333-4444-555555555555"
8) itemType=0x2012 flags=0x0 dataOffset=0x104 volCapacity:"494384795648"
9) itemType=0x2013 flags=0x0 dataOffset=0x114 volCreationDate:"2021-08-07 03:33:20 +0000"
10) itemType=0x2020 flags=0x0 dataOffset=0x150 volProps:"{ flags=0x100000081 valid=0x1000013ef requested=0x0 }"
11) itemType=0x2030 flags=0x0 dataOffset=0x17c volWasBoot:"1"
12) itemType=0xc001 flags=0x0 dataOffset=0xc4 volHomeDirRelativePathComponentCount:"1"
13) itemType=0xc011 flags=0x0 dataOffset=0x20 userName:"demo"
14) itemType=0xc012 flags=0x0 dataOffset=0xd4 userUID:"501"
15) itemType=0xd010 flags=0x0 dataOffset=0x4 creationOptions:"536870912")text");
}

TEST(BookmarkDescription, saysWhenAnAliasFileWasWritten) {
    EXPECT_THAT(
        bookmarkDetailedDescription(readWell(noteAliasFile())),
        testing::StartsWith(
            "Alias file: 656 bytes, version 0x10040000, data at 0x38, written 2023-03-08 20:28:20 +0000\n"
            "TOC at 0x184: level=1 nextTOC=0x0 items=16\n"
            "0) itemType=0x1004 "));
}

TEST(BookmarkDescription, listsEveryTableOfTheChain) {
    const std::string text = bookmarkDetailedDescription(readWell(composeBookmark(shareContents()).value()));
    EXPECT_THAT(text, HasSubstr("level=1 nextTOC=0x234 items=21\n0) itemType=0x1004"));
    EXPECT_THAT(text, HasSubstr("\nTOC at 0x234: level=61440 nextTOC=0x0 items=7\n0) itemType=0x2002"));
    EXPECT_THAT(text, HasSubstr("volInfoDepths:\"( 61440, 0, 1, 0 )\""));
    EXPECT_THAT(text, HasSubstr("fileIDs:\"( 25, <null>, <null> )\""));
    EXPECT_THAT(
        text, HasSubstr("volMountURL:\"{string = smb://demo@server/Share, encoding = 134217984, "
                        "base = (null)}\""));
}

TEST(BookmarkDescription, showsTheSecurityScopeKeyAndWarnings) {
    Data bytes = withByte(noteBookmark(), 0x10, 0xAA);
    bytes.resize(bytes.size() + 1);
    const std::string text = bookmarkDetailedDescription(readWell(bytes));
    EXPECT_THAT(
        text, HasSubstr("data at 0x30\nSecurity scope key: <aa000000 00000000 00000000 00000000 00000000 "
                        "00000000 00000000 00000000>\nTOC at 0x184"));
    EXPECT_THAT(text, testing::EndsWith("\"536870912\"\nWarning at 0x288: bytes follow the bookmark"));
}

TEST(BookmarkDescription, showsTheTeamIdentifierWhereThereIsOne) {
    const Data bytes = corpusData("team.bookmark");
    EXPECT_THAT(
        bookmarkDetailedDescription(readWell(bytes)),
        testing::StartsWith("Bookmark data: 664 bytes, version 0x10050000, data at 0x40\n"
                            "Team identifier: TEAM123456\nTOC at 0x184"));
    EXPECT_THAT(
        bookmarkDetailedDescription(readWell(withByte(bytes, 0x30, 0))),
        testing::StartsWith("Bookmark data: 664 bytes, version 0x10050000, data at 0x40\nTOC at 0x184"));
}

TEST(BookmarkDescription, showsAWrappedAliasRecordAsData) {
    HandmadeSection section;
    const std::uint32_t data = section.addText(record_type::data, "alias");
    const Data bytes = section.bookmark({{bookmark_key::aliasRecord, data, 0}});
    EXPECT_EQ(
        bookmarkDetailedDescription(readWell(withU32(bytes, 0, 0x7369'6C61))), // "alis"
        "Bookmark data of an alias record: 100 bytes, version 0x10040000, data at 0x30\n"
        "TOC at 0x14: level=1 nextTOC=0x0 items=1\n"
        "0) itemType=0xfe00 flags=0x0 dataOffset=0x4 aliasData:\"<616c6961 73>\"");
}

TEST(BookmarkDescription, showsNamedKeysByNameAndUnknownOnesWithout) {
    HandmadeSection section;
    const std::uint32_t name = section.addText(record_type::string, "a \"name\"\n");
    EXPECT_EQ(
        itemsOf(section.bookmark({{0x9999, name, 0x7F}, {0x8000'0000U | name, name, 0}})),
        "0) itemType=0x9999 flags=0x7f dataOffset=0x4 :\"a \\\"name\\\"\\n\"\n"
        "1) itemType=0x80000004 flags=0x0 dataOffset=0x4 a \\\"name\\\"\\n:\"a \\\"name\\\"\\n\"");
}

TEST(BookmarkDescription, describesEveryTypeOfRecord) {
    EXPECT_EQ(describedRecord(record_type::data, "0102030405"), "<01020304 05>");
    EXPECT_EQ(describedRecord(record_type::data, ""), "<>");
    EXPECT_EQ(describedRecord(0x0301, "ff"), "-1");
    EXPECT_EQ(describedRecord(0x0306, "000000000000f83f"), "1.5");
    EXPECT_EQ(describedRecord(record_type::date, "0000000000000000"), "2001-01-01 00:00:00 +0000");
    EXPECT_EQ(describedRecord(record_type::booleanFalse, ""), "0");
    EXPECT_EQ(describedRecord(record_type::array, ""), "( )");
    EXPECT_EQ(describedRecord(record_type::dictionary, ""), "{ }");
    EXPECT_EQ(
        describedRecord(record_type::uuid, "00112233445566778899aabbccddeeff"),
        "00112233-4455-6677-8899-AABBCCDDEEFF");
    EXPECT_EQ(describedRecord(record_type::null, ""), "<null>");
    EXPECT_EQ(describedRecord(0xABCD, "0102"), "type 0xabcd <0102>");
    EXPECT_EQ(describedRecord(record_type::date, "00"), "type 0x400 <00>");
}

TEST(BookmarkDescription, writesDataWhole) {
    HandmadeSection section;
    const std::string text = describedValue(section, section.add(record_type::data, Data(1'000)));
    EXPECT_EQ(std::ranges::count(text, '0'), 2'000);
    EXPECT_EQ(text.size(), 2'000U + 249U + 2U);
}

TEST(BookmarkDescription, writesCollectionsInTheirOwnOrder) {
    HandmadeSection section;
    const std::uint32_t b = section.addText(record_type::string, "b");
    const std::uint32_t a = section.addText(record_type::string, "a");
    const std::uint32_t array = section.addWords(record_type::array, {b, a});
    const std::uint32_t dictionary = section.addWords(record_type::dictionary, {b, a, a, array});
    EXPECT_EQ(describedValue(section, dictionary), "{ b = a; a = ( b, a ) }");
}

TEST(BookmarkDescription, writesRelativeURLsWithTheirBase) {
    HandmadeSection section;
    const std::uint32_t base = section.addText(record_type::absoluteURL, "file:///a/");
    const std::uint32_t part = section.addText(record_type::string, "b");
    EXPECT_EQ(
        describedValue(section, section.addWords(record_type::relativeURL, {base, part})),
        "{string = b, encoding = 134217984, base = {string = file:///a/, encoding = 134217984, base = "
        "(null)}}");
}

TEST(BookmarkDescription, keepsTextsWithinTheirLineAndQuotation) {
    EXPECT_EQ(describedText("plain text, with (all) else"), "plain text, with (all) else");
    EXPECT_EQ(describedText("\"\\\n\r\t"), "\\\"\\\\\\n\\r\\t");
    EXPECT_EQ(describedText(std::string_view("\0\x1F\x7F", 3)), "\\U0000\\U001f\\U007f");
    EXPECT_EQ(describedText("\u0080\u009F\u2028\u2029"), "\\U0080\\U009f\\U2028\\U2029");
    EXPECT_EQ(describedText("d\u00E9j\u00E0 \U0001F600"), "d\u00E9j\u00E0 \U0001F600");
}

TEST(BookmarkDescription, quotesElementsThatCouldBeMistaken) {
    EXPECT_EQ(describedElement("System Events.app"), "( System Events.app )");
    EXPECT_EQ(describedElement("a, b"), "( \\\"a, b\\\" )");
    EXPECT_EQ(describedElement(""), "( \\\"\\\" )");
    EXPECT_EQ(describedElement(" a"), "( \\\" a\\\" )");
    EXPECT_EQ(describedElement("<null>"), "( \\\"<null>\\\" )");
    EXPECT_EQ(describedElement("a\"b"), R"(( \"a\\\"b\" ))");
    EXPECT_EQ(describedElement("a\\b"), R"(( \"a\\\\b\" ))");
    EXPECT_EQ(describedElement("a\nb"), R"(( a\nb ))");
}

} // namespace
} // namespace tolvane::platform
