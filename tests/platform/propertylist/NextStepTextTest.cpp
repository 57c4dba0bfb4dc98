#include "platform/propertylist/NextStepCharacter.h"

#include <gtest/gtest.h>

#include <set>

namespace tolvane::platform {
namespace {

TEST(NextStepText, beginsWithAscii) {
    for (unsigned char byte = 0; byte < 0x80; ++byte) {
        EXPECT_EQ(nextStepCharacter(byte), char16_t{byte});
    }
}

TEST(NextStepText, hasItsOwnCharactersAfterAscii) {
    EXPECT_EQ(nextStepCharacter(0x80), u'\u00A0');
    EXPECT_EQ(nextStepCharacter(0x81), u'À');
    EXPECT_EQ(nextStepCharacter(0xAE), u'ﬁ');
    EXPECT_EQ(nextStepCharacter(0xD5), u'à');
    EXPECT_EQ(nextStepCharacter(0xFB), u'ß');
    EXPECT_EQ(nextStepCharacter(0xFD), u'ÿ');
    EXPECT_EQ(nextStepCharacter(0xFE), std::nullopt);
    EXPECT_EQ(nextStepCharacter(0xFF), std::nullopt);
    std::set<char16_t> characters;
    for (unsigned char byte = 0x80; byte < 0xFE; ++byte) {
        EXPECT_GE(*nextStepCharacter(byte), 0x80);
        characters.insert(*nextStepCharacter(byte));
    }
    EXPECT_EQ(characters.size(), 0x7EU) << "no character stands twice";
}

} // namespace
} // namespace tolvane::platform
