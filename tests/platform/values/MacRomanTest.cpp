#include "platform/values/MacRoman.h"

#include "platform/values/Utf8.h"
#include "tests/platform/bookmark/Examples.h"

#include <gtest/gtest.h>

#include <set>

namespace tolvane::platform {
namespace {

TEST(MacRoman, readsItsLowerHalfAsAsciiAndItsUpperHalf) {
    EXPECT_EQ(textOfMacRoman(tests::dataOfHex("41 7a 20 7e")), "Az ~");
    EXPECT_EQ(textOfMacRoman({}), "");
    EXPECT_EQ(
        textOfMacRoman(tests::dataOfHex("80 8e a5 ca d4 d5 db de f0 ff")),
        "\u00C4\u00E9\u2022\u00A0\u2018\u2019\u20AC\uFB01\uF8FF\u02C7");
}

TEST(MacRoman, hasADifferentCharacterForEveryByte) {
    std::set<std::string> characters;
    for (unsigned byte = 0; byte < 256; ++byte) {
        const std::string character = textOfMacRoman(Data{static_cast<std::byte>(byte)});
        EXPECT_TRUE(isValidUtf8(character));
        EXPECT_EQ(decodeFirstCharacter(character).length, character.size());
        characters.insert(character);
    }
    EXPECT_EQ(characters.size(), 256U);
}

} // namespace
} // namespace tolvane::platform
