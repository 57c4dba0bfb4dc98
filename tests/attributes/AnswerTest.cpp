#include "attributes/Answer.h"

#include "attributes/Parsing.h"

#include <gtest/gtest.h>

#include <array>

namespace tolvane::attributes {
namespace {

TEST(Answer, namesFlagsAndWhatIsLeft) {
    static constexpr std::array<Flag, 3> flags{{{3, "both"}, {1, "one"}, {4, "four"}}};
    EXPECT_EQ(flagNames(0, flags), "none");
    EXPECT_EQ(flagNames(7, flags), "both, four");
    EXPECT_EQ(flagNames(5, flags), "one, four");
    EXPECT_EQ(flagNames(0x12, flags), "unknown 0x12");
}

TEST(Answer, writesDatesWithoutZeros) {
    EXPECT_EQ(dateText(platform::Date::fromUnixTime(0, 0)), "1970-01-01 00:00:00 UTC");
    EXPECT_EQ(dateText(platform::Date::fromUnixTime(0, 120'000'000)), "1970-01-01 00:00:00.12 UTC");
    EXPECT_EQ(dateText(platform::Date(std::numeric_limits<double>::infinity())), "no date (inf)");
}

TEST(Answer, notesHowManyNotesAreMissing) {
    Explanation explanation;
    const Questions questions;
    Answer answer(explanation, questions);
    for (int i = 0; i < 103; ++i) {
        answer.note("x");
    }
    answer.finish();
    EXPECT_EQ(explanation.notes.size(), 101U);
    EXPECT_EQ(explanation.notes.back(), "3 more notes are not shown");
}

TEST(Parsing, shortensAtWholeCharacters) {
    EXPECT_EQ(shortened("abcdef", 6), "abcdef");
    EXPECT_EQ(shortened("abcdefg", 6), "abcdef…");
    EXPECT_EQ(shortened("ab\xC3\xA4xyz", 3), "ab…");
}

TEST(Parsing, showsSpecialPermissionsWhereListsOfFilesDo) {
    EXPECT_EQ(permissionLetters(0755), "rwxr-xr-x");
    EXPECT_EQ(permissionLetters(07777), "rwsrwsrwt");
    EXPECT_EQ(permissionLetters(07000), "--S--S--T");
}

TEST(Parsing, readsPairsOfUtf16) {
    const std::array<std::byte, 8> bytes{std::byte{0x3D}, std::byte{0xD8}, std::byte{0x00}, std::byte{0xDE},
                                         std::byte{0x3D}, std::byte{0xD8}, std::byte{'a'},  std::byte{0}};
    EXPECT_EQ(
        textOfUtf16(bytes), "\xF0\x9F\x98\x80\xEF\xBF\xBD"
                            "a");
}

TEST(Parsing, takesNumbersThatAreTheWholeText) {
    EXPECT_EQ(parsedNumber<std::uint32_t>("12"), 12U);
    EXPECT_EQ(parsedNumber<std::uint32_t>("ff", 16), 255U);
    for (const char* const wrong : {"", " 1", "1 ", "+1", "-1", "4294967296", "0x1"}) {
        EXPECT_EQ(parsedNumber<std::uint32_t>(wrong), std::nullopt) << wrong;
    }
}

} // namespace
} // namespace tolvane::attributes
