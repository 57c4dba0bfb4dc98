#include "platform/values/Description.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {
namespace {

using namespace std::string_view_literals;

Data data(std::size_t size) {
    Data bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes.push_back(static_cast<std::byte>(i));
    }
    return bytes;
}

// The description of an array of one leaf, which is described like this.
std::string arrayOf(std::string_view described) {
    return "(\n    " + std::string(described) + "\n)";
}

TEST(Description, indentsADictionaryInsideAnArray) {
    const Array array{
        Dictionary{
            {"GUID", 17},
            {"tile-data", Dictionary{{"label", "My App"}, {"url", "file:///Applications/My%20App.app/"}}}},
        "plain"};
    EXPECT_EQ(description(Value(array)), R"((
        {
        GUID = 17;
        "tile-data" =         {
            label = "My App";
            url = "file:///Applications/My%20App.app/";
        };
    },
    plain
))");
}

TEST(Description, indentsAnArrayInsideADictionary) {
    const Dictionary dictionary{
        {"user.note", Data{std::byte{'h'}, std::byte{'e'}, std::byte{'l'}, std::byte{'l'}, std::byte{'o'}}},
        {"list", Array{1, "two words"}}};
    constexpr std::string_view expected = R"({
    list =     (
        1,
        "two words"
    );
    "user.note" = <68656c6c 6f>;
})";
    EXPECT_EQ(description(dictionary), expected);
    EXPECT_EQ(description(Value(dictionary)), expected);
}

TEST(Description, indentsArraysInsideArrays) {
    EXPECT_EQ(description(Value(Array{Array{Array{1}, 2}, 3})), R"((
        (
                (
            1
        ),
        2
    ),
    3
))");
}

TEST(Description, writesEmptyCollectionsInTwoLinesAtEachLevel) {
    EXPECT_EQ(description(Dictionary()), "{\n}");
    EXPECT_EQ(description(Value(Dictionary())), "{\n}");
    EXPECT_EQ(description(Value(Array())), "(\n)");
    const Dictionary nested{{"a", Array{}}, {"b", Dictionary{}}, {"c", Dictionary{{"d", Array{}}}}};
    EXPECT_EQ(description(nested), R"({
    a =     (
    );
    b =     {
    };
    c =     {
        d =         (
        );
    };
})");
}

TEST(Description, quotesTextsUnlessTheyAreAllLettersAndDigits) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"Users", "Users"},
        {"644", "644"},
        {"azAZ09", "azAZ09"},
        {"", R"("")"},
        {"note.txt", R"("note.txt")"},
        {"_NSURLPathKey", R"("_NSURLPathKey")"},
        {"tile-data", R"("tile-data")"},
        {"/", R"("/")"},
        {"a:b", R"("a:b")"},
        {"a+b", R"("a+b")"},
        {"a b", R"("a b")"},
        {"a@", R"("a@")"},
        {"[`{", R"("[`{")"},
    };
    for (const auto& [text, described] : cases) {
        EXPECT_EQ(description(Value(Array{text})), arrayOf(described));
        EXPECT_EQ(
            description(Dictionary{{std::string(text), 1}}), "{\n    " + std::string(described) + " = 1;\n}");
    }
}

TEST(Description, escapesInsideQuotes) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"a\"b", R"("a\"b")"},
        {"a\\b", R"("a\\b")"},
        {"\a\b\f\n\r\t\v", R"("\a\b\f\n\r\t\v")"},
        {"\0\x01\x1B\x1F\x7F"sv, R"("\000\001\033\037\177")"},
        {" ~'", R"(" ~'")"},
        {"\u00E9", R"("\U00e9")"},
        {"caf\u00E9", R"("caf\U00e9")"},
        {"\u54C8\u54C8", R"("\U54c8\U54c8")"},
        {"\u0080\uFFFF", R"("\U0080\Uffff")"},
        {"\U00010000\U0010FFFF", R"("\Ud800\Udc00\Udbff\Udfff")"},
        {"a\xFFz\xE2\x82", R"("a\Ufffdz\Ufffd")"},
    };
    for (const auto& [text, described] : cases) {
        EXPECT_EQ(description(Value(Array{text})), arrayOf(described));
    }
}

TEST(Description, writesEveryKindOfLeaf) {
    const struct {
        Value leaf;
        std::string_view alone;
        std::string_view inCollection;
    } cases[] = {
        {Null{}, "<null>", R"("<null>")"},
        {true, "1", "1"},
        {false, "0", "0"},
        {std::int8_t{-4}, "-4", R"("-4")"},
        {std::int16_t{300}, "300", "300"},
        {std::int32_t{-70'000}, "-70000", R"("-70000")"},
        {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808", R"("-9223372036854775808")"},
        {std::uint8_t{255}, "255", "255"},
        {std::uint16_t{65'535}, "65535", "65535"},
        {std::uint32_t{4'294'967'295}, "4294967295", "4294967295"},
        {std::numeric_limits<std::uint64_t>::max(), "18446744073709551615", "18446744073709551615"},
        {1.5F, "1.5", R"("1.5")"},
        {-0.25, "-0.25", R"("-0.25")"},
        {"two words", "two words", R"("two words")"},
        {Date(744'920'822.5517), "2024-08-09 18:27:02 +0000", R"("2024-08-09 18:27:02 +0000")"},
        {data(3), "<000102>", "<000102>"},
        {URL::fileURLWithPath("/a b"), "file:///a%20b", R"("file:///a%20b")"},
        {UUID{}, "00000000-0000-0000-0000-000000000000", R"("00000000-0000-0000-0000-000000000000")"},
    };
    for (const auto& [leaf, alone, inCollection] : cases) {
        EXPECT_EQ(description(leaf), alone);
        EXPECT_EQ(description(Value(Array{leaf})), arrayOf(inCollection));
    }
}

TEST(Description, writesFractionsWithTheFewestDigits) {
    const std::pair<Value, std::string_view> cases[] = {
        {0.0, "0"},
        {0.1, "0.1"},
        {0.1F, "0.1"},
        {2.0, "2"},
        {100'000.0, "100000"},
        {-1'234'567.5, "-1234567.5"},
        {9'007'199'254'740'992.0, "9007199254740992"},
        {1e16, "1e+16"},
        {0.0001, "0.0001"},
        {0.00001, "1e-05"},
        {16'777'216.0F, "16777216"},
        {std::numeric_limits<double>::infinity(), "+infinity"},
        {-std::numeric_limits<float>::infinity(), "-infinity"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
    };
    for (const auto& [number, text] : cases) {
        EXPECT_EQ(description(number), text);
    }
}

TEST(Description, writesLoneTextAsItIsInValidUtf8) {
    EXPECT_EQ(description(Value("say \"\u00E9\\\n\"")), "say \"\u00E9\\\n\"");
    EXPECT_EQ(description(Value("")), "");
    EXPECT_EQ(description(Value("a\xFFz")), "a\uFFFDz");
}

TEST(Description, writesDataWholeInGroupsOfFourBytes) {
    EXPECT_EQ(description(Value(data(0))), "<>");
    EXPECT_EQ(description(Value(data(1))), "<00>");
    EXPECT_EQ(description(Value(data(4))), "<00010203>");
    EXPECT_EQ(description(Value(data(5))), "<00010203 04>");
    EXPECT_EQ(description(Value(data(10))), "<00010203 04050607 0809>");
    EXPECT_EQ(
        description(Value(data(40))),
        "<00010203 04050607 08090a0b 0c0d0e0f 10111213 14151617 18191a1b 1c1d1e1f 20212223 24252627>");
    EXPECT_EQ(description(Value(Data{std::byte{0xFF}, std::byte{0xA0}})), "<ffa0>");
    EXPECT_EQ(description(Value(data(100'000))).size(), 2U + 200'000U + 24'999U);
}

} // namespace
} // namespace tolvane::platform
