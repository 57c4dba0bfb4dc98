#include "platform/values/Utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {
namespace {

using namespace std::string_view_literals;

constexpr char32_t pastLastCodePoint = 0x110000;

bool isSurrogate(char32_t codePoint) {
    return codePoint >= 0xD800 && codePoint <= 0xDFFF;
}

struct Damage {
    std::string_view bytes;
    std::string_view shown;
};

// Each stands between "<" and ">" in the text that is read, and one U+FFFD is expected for each damaged spot.
constexpr Damage damages[] = {
    // A continuation byte without a lead.
    {"\x80"sv, "\uFFFD"sv},
    {"\xBF\x80"sv, "\uFFFD\uFFFD"sv},
    // Overlong forms, the longest of each length.
    {"\xC0\x80"sv, "\uFFFD\uFFFD"sv},
    {"\xC1\xBF"sv, "\uFFFD\uFFFD"sv},
    {"\xE0\x9F\xBF"sv, "\uFFFD\uFFFD\uFFFD"sv},
    {"\xF0\x8F\xBF\xBF"sv, "\uFFFD\uFFFD\uFFFD\uFFFD"sv},
    // Surrogates, the first and the last.
    {"\xED\xA0\x80"sv, "\uFFFD\uFFFD\uFFFD"sv},
    {"\xED\xBF\xBF"sv, "\uFFFD\uFFFD\uFFFD"sv},
    // Past U+10FFFF.
    {"\xF4\x90\x80\x80"sv, "\uFFFD\uFFFD\uFFFD\uFFFD"sv},
    {"\xF5\x80\x80\x80"sv, "\uFFFD\uFFFD\uFFFD\uFFFD"sv},
    // Bytes that begin nothing.
    {"\xFE\xFF"sv, "\uFFFD\uFFFD"sv},
    // Sequences broken off after each of their bytes.
    {"\xC3"sv, "\uFFFD"sv},
    {"\xE2"sv, "\uFFFD"sv},
    {"\xE2\x82"sv, "\uFFFD"sv},
    {"\xF0"sv, "\uFFFD"sv},
    {"\xF0\x9F"sv, "\uFFFD"sv},
    {"\xF0\x9F\x98"sv, "\uFFFD"sv},
    // Another character begins at the break.
    {"\xF0\x9F\x98\xF0\x9F\x98\x80"sv, "\uFFFD\U0001F600"sv},
    {"\xE2\x82\xC3\xA9"sv, "\uFFFD\u00E9"sv},
    {"\xE2\x82\0"sv, "\uFFFD\0"sv},
    {"\xF1\x80\x80\xE1\x80\xC2"sv, "\uFFFD\uFFFD\uFFFD"sv},
};

TEST(Utf8, replacesEachDamagedSpotByOneCharacter) {
    for (const Damage& damage : damages) {
        const std::string text = "<" + std::string(damage.bytes) + ">";
        EXPECT_FALSE(isValidUtf8(text)) << testing::PrintToString(damage.bytes);
        EXPECT_EQ(shownText(text), "<" + std::string(damage.shown) + ">");
        EXPECT_EQ(shownText(damage.bytes), damage.shown) << "at the end of the text";
    }
}

TEST(Utf8, decodesTheFirstCharacterAndWhetherItIsValid) {
    const std::pair<std::string_view, DecodedCharacter> cases[] = {
        {"\xE2\x82x", {.codePoint = U'\uFFFD', .length = 2, .valid = false}},
        {"\uFFFD", {.codePoint = U'\uFFFD', .length = 3, .valid = true}},
        {"\0x"sv, {.codePoint = U'\0', .length = 1, .valid = true}},
    };
    for (const auto& [text, first] : cases) {
        const DecodedCharacter decoded = decodeFirstCharacter(text);
        EXPECT_EQ(decoded.codePoint, first.codePoint);
        EXPECT_EQ(decoded.length, first.length);
        EXPECT_EQ(decoded.valid, first.valid);
    }
    EXPECT_EQ(decodeFirstCharacter("").length, 0U);
    EXPECT_FALSE(decodeFirstCharacter("").valid);
    EXPECT_TRUE(isValidUtf8(""));
    EXPECT_EQ(shownText(""), "");
    EXPECT_EQ(shownText("a\0b"sv), "a\0b"sv);
}

TEST(Utf8, writesTheFirstAndLastCharacterOfEachLength) {
    const std::pair<char32_t, std::string_view> edges[] = {
        {0, "\0"sv},
        {0x7F, "\x7F"sv},
        {0x80, "\xC2\x80"sv},
        {0x7FF, "\xDF\xBF"sv},
        {0x800, "\xE0\xA0\x80"sv},
        {0xD7FF, "\xED\x9F\xBF"sv},
        {0xE000, "\xEE\x80\x80"sv},
        {0xFFFF, "\xEF\xBF\xBF"sv},
        {0x10000, "\xF0\x90\x80\x80"sv},
        {0x10FFFF, "\xF4\x8F\xBF\xBF"sv}};
    for (const auto& [codePoint, bytes] : edges) {
        std::string text = "a";
        appendUtf8(text, codePoint);
        EXPECT_EQ(text, "a" + std::string(bytes));
    }
}

TEST(Utf8, readsEveryCharacterThatItWrites) {
    std::string all;
    for (char32_t codePoint = 0; codePoint < pastLastCodePoint; ++codePoint) {
        if (!isSurrogate(codePoint)) {
            appendUtf8(all, codePoint);
        }
    }
    EXPECT_TRUE(isValidUtf8(all));
    EXPECT_TRUE(shownText(all) == all);

    std::string_view rest = all;
    for (char32_t codePoint = 0; codePoint < pastLastCodePoint; ++codePoint) {
        if (isSurrogate(codePoint)) {
            continue;
        }
        const DecodedCharacter character = decodeFirstCharacter(rest);
        ASSERT_TRUE(character.valid);
        ASSERT_EQ(character.codePoint, codePoint);
        rest.remove_prefix(character.length);
    }
    EXPECT_TRUE(rest.empty());
}

TEST(Utf8, showsEveryPairOfBytesAsValidText) {
    for (unsigned first = 0; first < 0x100; ++first) {
        for (unsigned second = 0; second < 0x100; ++second) {
            const std::string bytes{static_cast<char>(first), static_cast<char>(second)};
            const std::string shown = shownText(bytes);
            ASSERT_TRUE(isValidUtf8(shown)) << first << ' ' << second;
            ASSERT_EQ(isValidUtf8(bytes), shown == bytes) << first << ' ' << second;
        }
    }
}

} // namespace
} // namespace tolvane::platform
