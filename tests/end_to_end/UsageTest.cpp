#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;
using Texts = std::vector<std::string>;

TEST(Usage, theHelpOfEveryVerbIsPrinted) {
    const std::vector<Texts> verbs{
        {},
        {"report"},
        {"bookmark"},
        {"bookmark", "make"},
        {"bookmark", "read"},
        {"bookmark", "show"},
        {"bookmark", "resolve"}};
    for (Texts words : verbs) {
        std::string usage = "Usage: tolvane-cli ";
        for (const std::string& word : words) {
            usage += word + " ";
        }
        words.emplace_back("--help");
        const auto outcome = run(tolvane(words));
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        EXPECT_THAT(outcome.out, StartsWith(usage));
        EXPECT_THAT(outcome.out, HasSubstr("--help"));
    }
}

TEST(Usage, theVersionIsOneLine) {
    const auto outcome = run(tolvane({"--version"}));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, MatchesRegex("tolvane-cli [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

class WrongUsage : public testing::TestWithParam<Texts> {};

TEST_P(WrongUsage, isComplainedOfWithStatusTwo) {
    const auto outcome = run(tolvane(GetParam()));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, StartsWith("tolvane-cli: "));
    EXPECT_THAT(outcome.err, HasSubstr("--help"));
}

INSTANTIATE_TEST_SUITE_P(
    All,
    WrongUsage,
    testing::Values(
        Texts{},
        Texts{""},
        Texts{"reprot", "/"},
        Texts{"--json"},
        Texts{"report", "--"},
        Texts{"report", "--unknown", "/"},
        Texts{"report", "--files0-from=-", "--", "-"},
        Texts{"bookmark"},
        Texts{"bookmark", "make", "/", "/"},
        Texts{"bookmark", "show", "--file"}));

// A complaint is one line even where what was given has several.
TEST(Usage, complaintsStayOnOneLine) {
    const auto outcome = run(tolvane({"report", "--files0-from=-", "two\nlines"}));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(linesOf(outcome.err).size(), 2U) << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr("two\\nlines"));
}

TEST(Usage, listsThatCannotBeReadAreComplainedOf) {
    const TemporaryFolder folder;
    struct Case {
        std::string list;
        std::string complaint;
    };
    const std::vector<Case> cases{
        {folder.path("missing"), ": No such file or directory\n"}, {folder.path(), ": Is a directory\n"}};
    for (const auto& [list, complaint] : cases) {
        const auto outcome = run(tolvane({"report", "--files0-from", list}));
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "tolvane-cli: " + list + complaint);
    }
}

TEST(Usage, anEmptyListIsReportedOnByNothing) {
    const auto outcome = run(reportOn({}));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "");
}

} // namespace
} // namespace tolvane::tests
