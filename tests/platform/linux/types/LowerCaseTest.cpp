#include "platform/linux/types/LowerCase.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {
namespace {

using namespace std::string_view_literals;

TEST(LowerCase, followsUnicodeInNoLanguageOfItsOwn) {
    const std::vector<std::pair<std::string_view, std::string_view>> texts{
        {"", ""},
        {"AZaz09@[`{.PNG", "azaz09@[`{.png"},
        {"A\0B"sv, "a\0b"sv},
        {"ÄÖÜ straße", "äöü straße"},
        {"ДОКУМЕНТ", "документ"},
        {"日本語", "日本語"},
        {"\U00010400", "\U00010428"},     // beyond the basic plane
        {"İİİ", "i\u0307i\u0307i\u0307"}, // becomes longer
        {"\u212A", "k"},                  // KELVIN SIGN: becomes shorter
        {"ΟΔΟΣ", "οδος"},                 // the final sigma
        {"IÉ", "ié"},                     // without a dot in Turkish
    };
    for (const auto& [text, lower] : texts) {
        EXPECT_EQ(lowerCase(text), lower);
    }
}

TEST(LowerCase, returnsNothingForTextThatIsNotUtf8) {
    for (const auto* text : {"\xFF", "A\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
        EXPECT_EQ(lowerCase(text), std::nullopt) << testing::PrintToString(text);
    }
}

TEST(LowerCase, comparesAsciiLettersWithoutTheirCase) {
    EXPECT_TRUE(equalIgnoringAsciiCase("Public.DATA", "public.data"));
    EXPECT_TRUE(equalIgnoringAsciiCase("", ""));
    EXPECT_FALSE(equalIgnoringAsciiCase("public.data", "public.dat"));
    EXPECT_FALSE(equalIgnoringAsciiCase("@", "`"));
    EXPECT_FALSE(equalIgnoringAsciiCase("É", "é"));
}

} // namespace
} // namespace tolvane::platform
