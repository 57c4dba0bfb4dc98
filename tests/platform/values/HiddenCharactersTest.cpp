#include "platform/values/HiddenCharacters.h"

#include <gtest/gtest.h>

namespace tolvane::tests {
namespace {

using platform::hiddenCharacterName;
using platform::isHiddenCharacter;

TEST(HiddenCharacters, areThoseThatAReaderDoesNotSeeForWhatTheyAre) {
    for (const char32_t codePoint :
         {U'\0',     U'\n',     U'\t',     U'\r',         U'\x1B',       U'\x7F',
          U'\u0085', U'\u00AD', U'\u034F', U'\u061C',     U'\u1160',     U'\u200B',
          U'\u200D', U'\u2028', U'\u202E', U'\u2066',     U'\u3164',     U'\uFDD0',
          U'\uFEFF', U'\uFFFE', U'\u17B4', U'\U0001D173', U'\U000E0041', U'\U0010FFFF'}) {
        EXPECT_TRUE(isHiddenCharacter(codePoint)) << std::hex << static_cast<unsigned>(codePoint);
    }
}

TEST(HiddenCharacters, areNoVisibleOnesAndNoBlanks) {
    for (const char32_t codePoint :
         {U' ', U'~', U'\u00A0', U'\u00E9', U'\u0301', U'\u0600', U'\u2003', U'\u2027', U'\u202F', U'\uFE0F',
          U'\uFFFD', U'\U0001F600', U'\U0001FFFD'}) {
        EXPECT_FALSE(isHiddenCharacter(codePoint)) << std::hex << static_cast<unsigned>(codePoint);
    }
}

TEST(HiddenCharacters, haveTheNamesOfTheirStandards) {
    EXPECT_EQ(hiddenCharacterName(U'\0'), "NUL");
    EXPECT_EQ(hiddenCharacterName(U'\r'), "CR");
    EXPECT_EQ(hiddenCharacterName(U'\x1F'), "US");
    EXPECT_EQ(hiddenCharacterName(U'\x7F'), "DEL");
    EXPECT_EQ(hiddenCharacterName(U'\u0085'), "U+0085");
    EXPECT_EQ(hiddenCharacterName(U'\u202E'), "U+202E");
    EXPECT_EQ(hiddenCharacterName(U'\U000E0041'), "U+E0041");
    EXPECT_EQ(hiddenCharacterName(U'\U0010FFFF'), "U+10FFFF");
}

} // namespace
} // namespace tolvane::tests
