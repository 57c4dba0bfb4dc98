#include "platform/values/Utf16Text.h"

#include "tests/support/ScriptedSources.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tolvane::platform {
namespace {

std::string utf8Of(std::u16string_view units) {
    Utf16Text text;
    for (const char16_t unit : units) {
        text.append(unit);
    }
    return text.take();
}

TEST(Utf16Text, becomesUtf8) {
    EXPECT_EQ(utf8Of(u""), "");
    EXPECT_EQ(utf8Of(u"aü€😀\U0010FFFF\uFFFF"), "aü€😀\U0010FFFF\uFFFF");
    EXPECT_EQ(utf8Of(std::u16string_view(u"a\0b", 3)), std::string_view("a\0b", 3));
}

TEST(Utf16Text, hasAReplacementForEachHalfOfAPair) {
    const std::u16string first = {0xD83D};
    const std::u16string second = {0xDE00};
    EXPECT_EQ(utf8Of(first), "\uFFFD");
    EXPECT_EQ(utf8Of(second), "\uFFFD");
    EXPECT_EQ(utf8Of(second + first), "\uFFFD\uFFFD");
    EXPECT_EQ(utf8Of(first + u"a" + second), "\uFFFDa\uFFFD");
    EXPECT_EQ(utf8Of(first + first + second + second), "\uFFFD😀\uFFFD");
}

TEST(Utf16Text, mixesWithUtf8AndBeginsAnew) {
    Utf16Text text;
    text.append("ü");
    text.append(u'\xD83D');
    text.append("€");
    text.append(u'\xDE00');
    EXPECT_EQ(text.take(), "ü\uFFFD€\uFFFD");
    text.append("a");
    EXPECT_EQ(text.take(), "a");
}

TEST(Utf16Text, isReadFromBytes) {
    using namespace std::string_view_literals;
    EXPECT_EQ(textOfBigEndianUtf16(tests::bytesOf("\0A\x20\xAC\xD8\x3D\xDE\x00"sv)), "A\u20AC\U0001F600");
    EXPECT_EQ(textOfBigEndianUtf16(tests::bytesOf("\0A\0"sv)), "A") << "an odd byte";
    EXPECT_EQ(textOfBigEndianUtf16({}), "");
}

} // namespace
} // namespace tolvane::platform
