#include "platform/values/HexDigits.h"

#include <gtest/gtest.h>

namespace tolvane::platform {
namespace {

TEST(HexDigits, writesAtLeastAsManyAsAskedFor) {
    EXPECT_EQ(hexText(0, 0), "");
    EXPECT_EQ(hexText(0, 1), "0");
    EXPECT_EQ(hexText(0xA, 4), "000a");
    EXPECT_EQ(hexText(0x12'AB, 2), "12ab");
    EXPECT_EQ(hexText(0x12'AB, 2, HexCase::upper), "12AB");
    EXPECT_EQ(hexText(0x89'AB'CD'EF'01'23'45'67, 1), "89abcdef01234567");
    EXPECT_EQ(hexText(1, 18), "000000000000000001");
}

TEST(HexDigits, readsBothCasesAndNothingElse) {
    for (int value = 0; value < 16; ++value) {
        const auto number = static_cast<unsigned>(value);
        EXPECT_EQ(valueOfHexDigit(hexText(number, 1).front()), value);
        EXPECT_EQ(valueOfHexDigit(hexText(number, 1, HexCase::upper).front()), value);
    }
    for (const char c : {'/', ':', '@', 'G', '`', 'g', ' ', '\0', '\xFF'}) {
        EXPECT_EQ(valueOfHexDigit(c), -1) << c;
    }
}

} // namespace
} // namespace tolvane::platform
