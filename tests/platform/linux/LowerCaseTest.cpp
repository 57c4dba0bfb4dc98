#include "platform/linux/LowerCase.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace tolvane::platform {
namespace {

using namespace std::string_view_literals;

TEST(LowerCase, changesOnlyTheCapitalsOfAscii) {
    EXPECT_EQ(lowerCase("AZaz09@[`{.PNG"), "azaz09@[`{.png");
    EXPECT_EQ(lowerCase(""), "");
    EXPECT_EQ(lowerCase("A\0B"sv), std::string("a\0b"sv));
}

TEST(LowerCase, knowsCapitalsOutsideAscii) {
    EXPECT_EQ(lowerCase("ÄÖÜ"), "äöü");
    EXPECT_EQ(lowerCase("ДОКУМЕНТ"), "документ");
    EXPECT_EQ(lowerCase("mixed ÉTÉ.TXT"), "mixed été.txt");
}

TEST(LowerCase, knowsCapitalsBeyondTheBasicPlane) {
    EXPECT_EQ(lowerCase("\U00010400"), "\U00010428");
}

TEST(LowerCase, leavesTextWithoutCapitalsAsItIs) {
    EXPECT_EQ(lowerCase("日本語"), "日本語");
    EXPECT_EQ(lowerCase("straße"), "straße");
}

TEST(LowerCase, growsWhereACapitalBecomesTwoCharacters) {
    EXPECT_EQ(lowerCase("İ"), "i\u0307");
    EXPECT_EQ(lowerCase("İİİİİİİİ"), "i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307");
}

TEST(LowerCase, shrinksWhereTheSmallLetterIsShorter) {
    EXPECT_EQ(lowerCase("\u212A"), "k"); // KELVIN SIGN
}

TEST(LowerCase, endsAWordWithTheFinalSigma) {
    EXPECT_EQ(lowerCase("ΟΔΟΣ"), "οδος");
}

TEST(LowerCase, doesNotFollowTheLanguageOfTheUser) {
    // Turkish would make a dotless letter of it; the text holds another capital so that it is not all ASCII.
    EXPECT_EQ(lowerCase("IÉ"), "ié");
}

TEST(LowerCase, answersNothingForTextThatIsNotUtf8) {
    EXPECT_EQ(lowerCase("\xFF"), std::nullopt);
    EXPECT_EQ(lowerCase("A\xC3"), std::nullopt);
    EXPECT_EQ(lowerCase("\xC0\xAF"), std::nullopt);         // overlong
    EXPECT_EQ(lowerCase("\xED\xA0\x80"), std::nullopt);     // surrogate
    EXPECT_EQ(lowerCase("\xF4\x90\x80\x80"), std::nullopt); // above U+10FFFF
}

TEST(LowerCase, survivesLongText) {
    std::string capitals;
    std::string smallLetters;
    for (int count = 0; count < 10000; ++count) {
        capitals += "Ж";
        smallLetters += "ж";
    }
    EXPECT_EQ(lowerCase(capitals), smallLetters);
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
