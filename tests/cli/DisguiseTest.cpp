#include "cli/Disguise.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::ElementsAre;

cli::Disguise disguiseOf(const std::vector<std::string>& arguments, std::size_t commandWords = 1) {
    return {arguments, commandWords};
}

TEST(Disguise, hidesNamesAndLeavesCommandsAndOptions) {
    EXPECT_THAT(
        disguiseOf({"--json", "report", "[a]", "-x", "-", "--from=++"}).shown(),
        ElementsAre("--json", "report", "name#0", "-x", "name#1", "--from=name#2"));
    EXPECT_THAT(
        disguiseOf({"bookmark", "show", "show"}, 2).shown(), ElementsAre("bookmark", "show", "name#0"));
}

TEST(Disguise, hidesAllThatFollowsTwoDashes) {
    EXPECT_THAT(
        disguiseOf({"report", "--", "--json", "--", "-"}).shown(),
        ElementsAre("report", "name#0", "name#1", "name#2"));
}

TEST(Disguise, givesTheNamesBack) {
    const cli::Disguise disguise = disguiseOf({"report", "[a]", "\xFF\n"});
    EXPECT_EQ(disguise.nameBehind("name#0"), "[a]");
    EXPECT_EQ(disguise.nameBehind("name#1"), "\xFF\n");
    EXPECT_EQ(disguise.nameBehind("-5"), std::nullopt);
    EXPECT_EQ(disguise.withNames("not expected: name#1 name#0"), "not expected: \xFF\n [a]");
    EXPECT_EQ(disguise.withNames("nothing"), "nothing");
}

TEST(Disguise, takesNothingThatWasGivenForAPlaceholder) {
    const cli::Disguise disguise = disguiseOf({"report", "first", "name#0", "--name#0", "--name##=x"});
    EXPECT_THAT(
        disguise.shown(), ElementsAre("report", "name###0", "name###1", "--name#0", "--name##=name###2"));
    EXPECT_EQ(disguise.withNames("not expected: name###1"), "not expected: name#0");
    EXPECT_EQ(disguise.withNames("not expected: --name#0"), "not expected: --name#0");
    EXPECT_EQ(disguise.nameBehind("name###1"), "name#0");
    EXPECT_EQ(disguise.nameBehind("name#0"), std::nullopt);
}

TEST(Disguise, tellsPlaceholdersApartThatBeginAlike) {
    std::vector<std::string> arguments{"report"};
    for (int i = 0; i < 12; ++i) {
        arguments.push_back(std::string(1, static_cast<char>('a' + i)));
    }
    EXPECT_EQ(disguiseOf(arguments).withNames("name#1 name#11 name#1"), "b l b");
}

} // namespace
} // namespace tolvane::tests
