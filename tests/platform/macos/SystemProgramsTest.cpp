#include "tests/platform/macos/real/programs/SystemPrograms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

namespace tolvane::tests::macos {

using platform::Data;

TEST(SystemPrograms, areRunWithTheirArgumentsAsTheyAre) {
    const ProgramAnswer answer = answerOf({"printf", "%s|", "a b", "$HOME", "'"});
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.out, "a b|$HOME|'|");
}

TEST(SystemPrograms, haveNoInputAndAnyAmountOfOutput) {
    EXPECT_EQ(answerOf({"cat"}).out, "");
    EXPECT_EQ(answerOf({"head", "-c", "300000", "/dev/zero"}).out, std::string(300'000, '\0'));
}

TEST(SystemPrograms, endWithAStatusIfTheyStartedAndNoSignalEndedThem) {
    EXPECT_EQ(answerOf({"sh", "-c", "echo before; exit 3"}).status, 3);
    EXPECT_EQ(answerOf({"sh", "-c", "echo before; exit 3"}).out, "before\n");
    EXPECT_EQ(answerOf({"sh", "-c", "kill -9 $$"}).status, -1);
    EXPECT_NE(answerOf({"tolvane-no-such-program"}).status, 0);
}

TEST(SystemPrograms, sayTheirWordsBetweenBlanks) {
    EXPECT_THAT(wordsOf(" 12 0100640\n3 \n"), testing::ElementsAre("12", "0100640", "3"));
    EXPECT_TRUE(wordsOf("\n").empty());
}

TEST(SystemPrograms, sayTimesInTheTimeZoneOfTheProcess) {
    std::tm parts{};
    parts.tm_year = 124;
    parts.tm_mon = 7;
    parts.tm_mday = 9;
    parts.tm_hour = 18;
    parts.tm_min = 27;
    parts.tm_sec = 2;
    parts.tm_isdst = -1;
    EXPECT_EQ(secondsOfLocalTime("08/09/2024 18:27:02\n"), std::mktime(&parts));
    EXPECT_EQ(secondsOfLocalTime("2024-08-09 18:27:02"), std::nullopt);
    EXPECT_EQ(secondsOfLocalTime(""), std::nullopt);
}

TEST(SystemPrograms, sayBytesInHexadecimalOverLines) {
    EXPECT_EQ(bytesOfHex("54 0a\nFF\n"), (Data{std::byte{0x54}, std::byte{0x0A}, std::byte{0xFF}}));
    EXPECT_EQ(bytesOfHex("\n"), Data());
    for (const auto* text : {"5", "545", "0x", "zz", "-1"}) {
        EXPECT_EQ(bytesOfHex(text), std::nullopt) << text;
    }
}

} // namespace tolvane::tests::macos
