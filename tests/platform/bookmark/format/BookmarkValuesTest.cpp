#include "platform/bookmark/format/BookmarkValues.h"

#include "tests/platform/bookmark/Examples.h"

namespace tolvane::platform {
namespace {

using namespace tests;

/// The value of a single record.
Value valueOf(std::uint32_t type, std::string_view digits) {
    HandmadeSection section;
    const std::uint32_t offset = section.add(type, dataOfHex(digits));
    const BookmarkStructure structure = readWell(section.bookmark({{1, offset, 0}}));
    return BookmarkItems(structure, table_identifier::target).value(1).value_or("absent");
}

Value unknown(std::uint32_t type, std::string_view digits) {
    return Dictionary{{"type", type}, {"bytes", dataOfHex(digits)}};
}

TEST(BookmarkValues, decodeNumbersByTheirWidth) {
    EXPECT_EQ(valueOf(0x0301, "fe"), Value(std::int8_t{-2}));
    EXPECT_EQ(valueOf(0x0302, "feff"), Value(std::int16_t{-2}));
    EXPECT_EQ(valueOf(0x0303, "000000a0"), Value(std::int32_t{-0x6000'0000}));
    EXPECT_EQ(valueOf(0x0304, "1500 0000 ffff ff0f"), Value(std::int64_t{0x0FFF'FFFF'0000'0015}));
    EXPECT_EQ(valueOf(0x0303, "1500 0000 ffff ff0f"), Value(std::int64_t{0x0FFF'FFFF'0000'0015}));
    EXPECT_EQ(valueOf(0x0309, "0700"), Value(std::int16_t{7})) << "another name of a width";
    EXPECT_EQ(valueOf(0x0304, "070000"), unknown(0x0304, "070000"));
    EXPECT_EQ(valueOf(0x0304, ""), unknown(0x0304, ""));
}

TEST(BookmarkValues, decodeFractionsByTheirWidth) {
    EXPECT_EQ(valueOf(0x0305, "0000c03f"), Value(1.5F));
    EXPECT_EQ(valueOf(0x0306, "000000000000f8bf"), Value(-1.5));
    EXPECT_EQ(valueOf(0x0306, "0000c03f"), Value(1.5F));
    EXPECT_EQ(valueOf(0x030D, "000000000000f8bf"), Value(-1.5));
    EXPECT_EQ(valueOf(0x0306, "0000"), unknown(0x0306, "0000"));
}

TEST(BookmarkValues, readDatesWithTheMostSignificantByteFirst) {
    EXPECT_EQ(valueOf(record_type::date, "41c4dc9380400000"), Value(Date(700'000'000.5)));
    EXPECT_EQ(valueOf(record_type::date, "c1cd27e440000000"), Value(Date(-978'307'200.0)));
    EXPECT_EQ(valueOf(record_type::date, "41c4dc93"), unknown(record_type::date, "41c4dc93"));
}

TEST(BookmarkValues, readTheOtherKinds) {
    EXPECT_EQ(valueOf(record_type::string, "c3a9"), Value("\u00E9"));
    EXPECT_EQ(valueOf(record_type::string, ""), Value(""));
    EXPECT_EQ(valueOf(record_type::data, "010203"), Value(dataOfHex("010203")));
    EXPECT_EQ(valueOf(record_type::booleanFalse, ""), Value(false));
    EXPECT_EQ(valueOf(record_type::booleanTrue, ""), Value(true));
    EXPECT_EQ(valueOf(record_type::null, ""), Value());
    EXPECT_EQ(valueOf(record_type::array, ""), Value(Array()));
    const Value uuid = valueOf(record_type::uuid, "00112233445566778899aabbccddeeff");
    ASSERT_NE(uuid.as<UUID>(), nullptr);
    EXPECT_EQ(uuid.as<UUID>()->text(), "00112233-4455-6677-8899-AABBCCDDEEFF");
    EXPECT_EQ(valueOf(record_type::uuid, "0011"), unknown(record_type::uuid, "0011"));
    EXPECT_EQ(valueOf(0x1234'5678, "0011"), unknown(0x1234'5678, "0011"));
    EXPECT_EQ(valueOf(0x0502, ""), unknown(0x0502, ""));
}

TEST(BookmarkValues, readURLsAndKeepTheTextOfInvalidOnes) {
    EXPECT_EQ(valueOf(record_type::absoluteURL, "66696c653a2f2f2f"), Value(*URL::fromText("file:///")));
    EXPECT_EQ(valueOf(record_type::absoluteURL, "2f2f"), Value("//"));

    HandmadeSection section;
    const std::uint32_t base = section.addText(record_type::absoluteURL, "file:///a/");
    const std::uint32_t part = section.addText(record_type::string, "b");
    const std::uint32_t relative = section.addWords(record_type::relativeURL, {base, part});
    const std::uint32_t outer = section.addWords(record_type::relativeURL, {relative, part});
    const BookmarkStructure structure = readWell(section.bookmark({{1, relative, 0}, {2, outer, 0}}));
    const BookmarkItems items(structure, table_identifier::target);
    EXPECT_EQ(items.value(1), Value("b -- file:///a/"));
    EXPECT_EQ(items.value(2), Value("b -- b -- file:///a/"));
}

TEST(BookmarkValues, readCollectionsWithAllTheyHold) {
    HandmadeSection section;
    const std::uint32_t b = section.addText(record_type::string, "b");
    const std::uint32_t a = section.addText(record_type::string, "a");
    const std::uint32_t array = section.addWords(record_type::array, {b, a, b});
    const std::uint32_t dictionary = section.addWords(record_type::dictionary, {b, a, a, array});
    const BookmarkStructure structure = readWell(section.bookmark({{1, dictionary, 0}}));
    EXPECT_EQ(
        BookmarkItems(structure, table_identifier::target).value(1),
        Value(Dictionary{{"a", Array{"b", "a", "b"}}, {"b", "a"}}));
}

TEST(BookmarkItems, giveNothingForAnotherKind) {
    HandmadeSection section;
    const std::uint32_t text = section.addText(record_type::string, "file:///");
    const std::uint32_t url = section.addText(record_type::absoluteURL, "no url");
    const std::uint32_t null = section.add(record_type::null, {});
    const std::uint32_t nulls = section.addWords(record_type::array, {null});
    const std::uint32_t fraction = section.add(record_type::float64, Data(8));
    const BookmarkStructure structure =
        readWell(section.bookmark({{1, text, 0}, {2, url, 0}, {3, nulls, 0}, {4, fraction, 0}}));
    const BookmarkItems items(structure, table_identifier::target);
    EXPECT_EQ(items.string(1), "file:///");
    EXPECT_EQ(items.urlText(1), std::nullopt);
    EXPECT_EQ(items.string(2), std::nullopt);
    EXPECT_EQ(items.urlText(2), "no url");
    EXPECT_EQ(items.strings(3), std::nullopt);
    ASSERT_TRUE(items.integers(3));
    EXPECT_EQ(items.integers(3)->front(), std::nullopt);
    EXPECT_EQ(items.integer(4), std::nullopt);
    EXPECT_EQ(items.boolean(4), std::nullopt);
    EXPECT_EQ(items.date(4), std::nullopt);
    EXPECT_EQ(items.flags(4), std::nullopt);
    EXPECT_EQ(items.record(5), nullptr);
    EXPECT_EQ(items.value(5), std::nullopt);
}

TEST(BookmarkItems, readFlagsOfThreeWords) {
    HandmadeSection section;
    const std::uint32_t flags = section.addWords(record_type::data, {0x81, 0x1, 0x13EF, 0x1, 0, 0x8000'0000});
    const std::uint32_t longer = section.add(record_type::data, Data(25));
    const BookmarkStructure structure = readWell(section.bookmark({{1, flags, 0}, {2, longer, 0}}));
    const BookmarkItems items(structure, table_identifier::target);
    EXPECT_EQ(items.flags(1), (BookmarkFlags{0x1'0000'0081, 0x1'0000'13EF, 0x8000'0000'0000'0000}));
    EXPECT_EQ(items.flags(2), std::nullopt);
}

} // namespace
} // namespace tolvane::platform
