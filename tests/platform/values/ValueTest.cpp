#include "platform/values/Value.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace tolvane::platform {
namespace {

template <typename Number>
using Limits = std::numeric_limits<Number>;

enum Unscoped { unscoped };
struct Foreign {};

static_assert(!std::is_constructible_v<Value, char>);
static_assert(!std::is_constructible_v<Value, Unscoped>);
static_assert(!std::is_constructible_v<Value, long double>);
static_assert(!std::is_constructible_v<Value, Foreign>);
static_assert(!std::is_constructible_v<Value, void*>);
static_assert(!std::is_constructible_v<Value, std::nullptr_t>);

template <typename Kind>
void expectKept(const Kind& kind) {
    const Value value(kind);
    ASSERT_NE(value.as<Kind>(), nullptr);
    EXPECT_EQ(*value.as<Kind>(), kind);
    EXPECT_TRUE(Value(value) == value);
}

TEST(Value, keepsEveryKindAsItIs) {
    EXPECT_NE(Value().as<Null>(), nullptr);
    expectKept(Null{});
    expectKept(true);
    expectKept(std::int8_t{-1});
    expectKept(std::int16_t{-1});
    expectKept(std::int32_t{-1});
    expectKept(std::int64_t{-1});
    expectKept(std::uint8_t{1});
    expectKept(std::uint16_t{1});
    expectKept(std::uint32_t{1});
    expectKept(std::uint64_t{1});
    expectKept(1.5F);
    expectKept(1.5);
    expectKept(std::string("text\0more", 9));
    expectKept(Date(1));
    expectKept(Data{std::byte{1}});
    expectKept(Array{1, "two", Array{}});
    expectKept(Dictionary{{"key", 1}});
    expectKept(URL::fileURLWithPath("/a"));
    expectKept(UUID{});
}

TEST(Value, isEqualOnlyToItsOwnKindAndConvertsLiteralsAndViewsToText) {
    ASSERT_NE(Value("a").as<std::string>(), nullptr);
    EXPECT_EQ(Value("a"), Value(std::string_view("a")));
    EXPECT_EQ(Value("a"), Value(std::string("a")));
    EXPECT_FALSE(Value(std::int32_t{1}) == Value(std::int64_t{1}));
    EXPECT_FALSE(Value(true) == Value(1));
    EXPECT_FALSE(Value(1) == Value(2));
    EXPECT_EQ(Value(1).as<std::int64_t>(), nullptr);
}

TEST(Value, readsIntegersThatFitExactly) {
    const struct {
        Value value;
        std::optional<std::int64_t> asSigned;
        std::optional<std::uint64_t> asUnsigned;
    } cases[] = {
        {std::int8_t{-128}, -128, {}},
        {std::int16_t{-1}, -1, {}},
        {std::int32_t{7}, 7, 7},
        {std::uint8_t{255}, 255, 255},
        {std::uint16_t{65'535}, 65'535, 65'535},
        {Limits<std::uint32_t>::max(), 4'294'967'295, 4'294'967'295},
        {Limits<std::int64_t>::min(), Limits<std::int64_t>::min(), {}},
        {Limits<std::int64_t>::max(), Limits<std::int64_t>::max(), 0x7FFF'FFFF'FFFF'FFFF},
        {std::uint64_t{0x8000'0000'0000'0000}, {}, 0x8000'0000'0000'0000},
        {Limits<std::uint64_t>::max(), {}, Limits<std::uint64_t>::max()},
        {true, {}, {}},
        {1.0, {}, {}},
        {1.0F, {}, {}},
        {"1", {}, {}},
        {Null{}, {}, {}},
        {Date(1), {}, {}},
        {Array{1}, {}, {}},
    };
    for (const auto& [value, asSigned, asUnsigned] : cases) {
        EXPECT_EQ(value.exactInt64(), asSigned) << value.storage().index();
        EXPECT_EQ(value.exactUInt64(), asUnsigned) << value.storage().index();
    }
}

TEST(Value, readsNumbersAsThePlatformDoes) {
    const struct {
        Value value;
        std::optional<std::int64_t> integer;
        std::optional<std::uint32_t> unsignedInt;
    } cases[] = {
        {false, 0, 0},
        {true, 1, 1},
        {std::int8_t{-1}, -1, 0xFFFF'FFFF},
        {std::uint16_t{493}, 493, 493},
        {std::int64_t{0x1'0000'0002}, 0x1'0000'0002, 2},
        {Limits<std::int64_t>::min(), Limits<std::int64_t>::min(), 0},
        {Limits<std::uint64_t>::max(), -1, 0xFFFF'FFFF},
        {1.9, 1, 1},
        {-1.9, -1, 0xFFFF'FFFF},
        {-0.5F, 0, 0},
        {4'294'967'297.5, 4'294'967'297, 1},
        {0x1.fffffffffffffp62, 9'223'372'036'854'774'784, 0xFFFF'FC00},
        {0x1p63, Limits<std::int64_t>::max(), 0xFFFF'FFFF},
        {-0x1p63, Limits<std::int64_t>::min(), 0},
        {-1e300, Limits<std::int64_t>::min(), 0},
        {Limits<float>::infinity(), Limits<std::int64_t>::max(), 0xFFFF'FFFF},
        {Limits<double>::quiet_NaN(), 0, 0},
        {"1", {}, {}},
        {Null{}, {}, {}},
        {Date(1), {}, {}},
    };
    for (const auto& [value, integer, unsignedInt] : cases) {
        EXPECT_EQ(value.integerValue(), integer) << value.storage().index();
        EXPECT_EQ(value.unsignedIntValue(), unsignedInt) << value.storage().index();
    }
}

TEST(UUID, isWrittenInGroupsInTheOrderOfItsBytes) {
    UUID uuid;
    for (unsigned i = 0; i < uuid.bytes.size(); ++i) {
        uuid.bytes.at(i) = static_cast<std::byte>(i * 0x11);
    }
    EXPECT_EQ(uuid.text(), "00112233-4455-6677-8899-AABBCCDDEEFF");
    EXPECT_EQ(UUID{}.text(), "00000000-0000-0000-0000-000000000000");
    EXPECT_FALSE(uuid == UUID{});
}

std::vector<std::string> keysOf(const Dictionary& dictionary) {
    std::vector<std::string> keys;
    for (const Dictionary::Entry& entry : dictionary) {
        keys.push_back(entry.key);
    }
    return keys;
}

TEST(Dictionary, findsWhatWasSet) {
    Dictionary dictionary;
    EXPECT_TRUE(dictionary.empty());
    EXPECT_EQ(dictionary.begin(), dictionary.end());
    EXPECT_EQ(dictionary.find(""), nullptr);
    dictionary.set("b", 1);
    dictionary.set("", 2);
    for (const auto& [key, value] : {std::pair{"b", 1}, {"", 2}}) {
        ASSERT_NE(dictionary.find(key), nullptr) << key;
        EXPECT_EQ(*dictionary.find(key), Value(value)) << key;
    }
    EXPECT_EQ(dictionary.find("a"), nullptr);
    EXPECT_EQ(dictionary.find("bb"), nullptr);
    EXPECT_EQ(dictionary.size(), 2U);
    EXPECT_FALSE(dictionary.empty());
}

TEST(Dictionary, replacesTheValueOfAKeyThatIsThere) {
    Dictionary dictionary{{"a", 1}, {"b", 2}, {"a", 3}};
    EXPECT_EQ(dictionary, (Dictionary{{"b", 2}, {"a", 3}})) << "whatever the order of setting";
    dictionary.set("b", "text");
    EXPECT_EQ(dictionary, (Dictionary{{"a", 3}, {"b", "text"}}));
    EXPECT_EQ(dictionary.size(), 2U);
    for (const Dictionary& other :
         {Dictionary{{"a", 3}}, {{"a", 3}, {"b", "x"}}, {{"a", 3}, {"c", "text"}}}) {
        EXPECT_FALSE(dictionary == other);
    }
}

TEST(Dictionary, sortsCapitalsBeforeTheLowLineBeforeSmallLetters) {
    const Dictionary dictionary{{"b", 1}, {"_", 1}, {"Z", 1}, {"aa", 1}, {"a", 1}, {"B", 1}, {"", 1}};
    EXPECT_EQ(keysOf(dictionary), (std::vector<std::string>{"", "B", "Z", "_", "a", "aa", "b"}));
}

TEST(Dictionary, sortsByUtf16CodeUnit) {
    const struct {
        std::string utf8;
        std::u16string utf16;
    } characters[] = {
        {"a", u"a"},
        {"\u00FF", u"\u00FF"},
        {"\uD7FF", u"\uD7FF"},
        {"\uE000", u"\uE000"},
        {"\uFFFF", u"\uFFFF"},
        {"\U00010000", u"\U00010000"},
        {"\U0010FFFF", u"\U0010FFFF"},
        {"", u""},
    };
    Dictionary dictionary;
    std::vector<std::pair<std::u16string, std::string>> expected;
    for (const auto& first : characters) {
        for (const auto& second : characters) {
            dictionary.set(first.utf8 + second.utf8, 1);
            expected.emplace_back(first.utf16 + second.utf16, first.utf8 + second.utf8);
        }
    }
    std::ranges::sort(expected);
    const auto repeated = std::ranges::unique(expected);
    expected.erase(repeated.begin(), repeated.end());

    const std::vector<std::string> keys = keysOf(dictionary);
    ASSERT_EQ(keys.size(), expected.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(keys[i], expected[i].second);
        EXPECT_NE(dictionary.find(keys[i]), nullptr);
    }
}

TEST(Dictionary, copiesAreIndependentAndItCanBeAssignedWhatItHolds) {
    const Dictionary inner{{"b", "a text too long to be kept in place"}, {"c", 2}};
    Dictionary original{{"a", inner}, {"z", 1}};
    const Dictionary copy = original;
    original.set("z", 2);
    EXPECT_EQ(copy, (Dictionary{{"a", inner}, {"z", 1}}));
    const Dictionary& same = original;
    original = same;
    EXPECT_EQ(original, (Dictionary{{"a", inner}, {"z", 2}}));
    Dictionary moved = std::move(original);
    EXPECT_EQ(moved, (Dictionary{{"a", inner}, {"z", 2}}));
    const Value* held = moved.find("a");
    ASSERT_NE(held, nullptr);
    ASSERT_NE(held->as<Dictionary>(), nullptr);
    moved = *held->as<Dictionary>();
    EXPECT_EQ(moved, inner);
}

TEST(Dictionary, sortsEntriesThatAreGivenTogether) {
    const Dictionary dictionary =
        Dictionary::fromEntries({{"b", 2}, {"\uFF41", 4}, {"a", 1}, {"\U0001F600", 3}});
    EXPECT_EQ(dictionary, (Dictionary{{"a", 1}, {"b", 2}, {"\U0001F600", 3}, {"\uFF41", 4}}));
    EXPECT_EQ(Dictionary::fromEntries({}), Dictionary());
    EXPECT_EQ(
        Dictionary::fromEntries({{"a", 1}, {"b", 5}, {"a", 2}, {"c", 6}, {"c", 7}, {"a", 3}}),
        (Dictionary{{"a", 3}, {"b", 5}, {"c", 7}}))
        << "the last entry of a key counts";
}

} // namespace
} // namespace tolvane::platform
