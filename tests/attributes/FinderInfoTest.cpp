#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using platform::ItemKind;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* finderInfo = "user.com.apple.FinderInfo";

std::vector<std::string> linesOfKind(const std::string& value, ItemKind kind) {
    return linesOf(explained(finderInfo, value, {{}, kind}));
}

TEST(FinderInfo, ofAFileHasCodesFlagsAndPlace) {
    expectLines(
        finderInfo, finderInfoOfFile("TEXT", "ttxt", 0x4418, -3, 200),
        {"Type: TEXT", "Creator: ttxt", "Flags: extension hidden, custom icon, invisible (0x4418)",
         "Label: blue (4)", "Icon: 200 across, -3 down"});
    EXPECT_EQ(
        explainedSummary(finderInfo, finderInfoOfFile("alis", "MACS", 0x8000)),
        "What the Finder keeps about a file: alias file, alias.");
    EXPECT_THAT(explainedLines(finderInfo, finderInfoOfFile("\x8A\x8A\x8A\x8A", "test", 0))[0], "Type: ääää");
}

TEST(FinderInfo, ofAFileHasWhatMacsHide) {
    std::string value = finderInfoOfFile("TEXT", "ttxt", 0);
    value.replace(16, 16, big<4>(7, 1'700'000'000) + big<2>(0x0104, 0) + big<4>(9));
    EXPECT_THAT(
        explainedLines(finderInfo, value), testing::IsSupersetOf(
                                               {"Document number: 7", "Added: 2023-11-14 22:13:20 UTC",
                                                "Extended flags: custom badge, routing information (0x0104)",
                                                "Put-away folder or write generation: 9"}));
}

TEST(FinderInfo, ofAFolderHasItsWindow) {
    const std::string value =
        big<2>(10, 20, 300, 0xFFFF, 0x000C) + big<4>(0) + big<2>(0x100, 1, 2) + big<4>(0, 0, 5);
    EXPECT_THAT(
        linesOfKind(value, ItemKind::folder),
        ElementsAre(
            "Window: top 10, left 20, bottom 300, right -1", "Flags: none (0x000c)", "Label: red (6)",
            "View: 0x0100", "Scrolled: 2 across, 1 down", "Put-away folder: 5"));
    EXPECT_THAT(explained(finderInfo, value).summary, HasSubstr("about a folder: label red."));
    EXPECT_THAT(linesOfKind(value, ItemKind::regularFile), testing::Not(Contains(HasSubstr("Window"))));
}

TEST(FinderInfo, ofAProDosFileHasItsTypes) {
    expectLines(
        finderInfo, finderInfoOfFile(bytesOfHex("70b3db07"), "pdos", 0),
        {"ProDOS type: 0xb3", "ProDOS auxiliary type: 0xdb07", "Flags: none (0x0000)", "Label: none (0)"});
}

TEST(FinderInfo, doesNotGuessWhetherItIsOfAFolder) {
    const std::string value = finderInfoOfFile(zeros(4), zeros(4), 0x4000);
    EXPECT_EQ(
        explainedSummary(finderInfo, value), "What the Finder keeps about a file or folder: invisible.");
    EXPECT_THAT(
        explained(finderInfo, value, {{}, ItemKind::regularFile}).summary, HasSubstr("about a file: "));
    EXPECT_THAT(explained(finderInfo, value, {{}, ItemKind::folder}).summary, HasSubstr("about a folder: "));
}

TEST(FinderInfo, saysThatACodeIsBlank) {
    EXPECT_THAT(
        explainedLines(finderInfo, finderInfoOfFile("    ", "    ", 0)),
        testing::IsSupersetOf({"Type: four spaces", "Creator: four spaces"}));
}

TEST(FinderInfo, hasThirtyTwoBytes) {
    expectEveryCutRefused(finderInfo, zeros(32));
    expectRefused(finderInfo, {zeros(33)});
}

} // namespace
} // namespace tolvane::tests
