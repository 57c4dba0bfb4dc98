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

TEST(Usage, helpIsPrintedAndNamesWhatCanBeAsked) {
    const auto program = run(tolvane({"--help"}));
    EXPECT_EQ(program.status, 0);
    EXPECT_EQ(program.err, "");
    for (const std::string word : {"report", "--help", "--version"}) {
        EXPECT_THAT(program.out, HasSubstr(word));
    }
    const auto command = run(tolvane({"report", "--help"}));
    EXPECT_EQ(command.status, 0);
    EXPECT_EQ(command.err, "");
    for (const std::string word : {"FILE", "--files0-from", "--json", "--help"}) {
        EXPECT_THAT(command.out, HasSubstr(word));
    }
}

TEST(Usage, helpOfTheBookmarkVerbsNamesTheirArguments) {
    struct Case {
        Texts command;
        Texts words;
    };
    const std::vector<Case> cases{
        {{"bookmark"}, {"make", "read", "show", "resolve"}},
        {{"bookmark", "make"}, {"FILE", "--alias"}},
        {{"bookmark", "read"}, {"ALIASFILE"}},
        {{"bookmark", "show"}, {"TEXT", "--file", "--json", "standard input"}},
        {{"bookmark", "resolve"}, {"TEXT", "--file", "--json", "--verbose"}}};
    for (auto [command, words] : cases) {
        command.emplace_back("--help");
        const auto outcome = run(tolvane(command));
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        for (const std::string& word : words) {
            EXPECT_THAT(outcome.out, HasSubstr(word));
        }
    }
}

TEST(Usage, aMistypedCommandIsSuggested) {
    EXPECT_THAT(run(tolvane({"reprot", "/"})).err, HasSubstr("is report meant?"));
    EXPECT_THAT(run(tolvane({"bookmark", "shwo"})).err, HasSubstr("is show meant?"));
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
        Texts{"describe"},
        Texts{"/etc/passwd"},
        Texts{"--json"},
        Texts{"report"},
        Texts{"report", "--json"},
        Texts{"report", "--"},
        Texts{"report", "--unknown", "/"},
        Texts{"report", "-x", "/"},
        Texts{"report", "--files0-from"},
        Texts{"report", "--files0-from=-", "/"},
        Texts{"report", "--files0-from=-", "--", "-"},
        Texts{"report", "--files0-from=-", "--files0-from=-"},
        Texts{"bookmark"},
        Texts{"bookmark", "describe"},
        Texts{"bookmark", "--json"},
        Texts{"bookmark", "make"},
        Texts{"bookmark", "make", "/", "/"},
        Texts{"bookmark", "make", "--json", "/"},
        Texts{"bookmark", "read"},
        Texts{"bookmark", "read", "--"},
        Texts{"bookmark", "show", "AAAA", "AAAA"},
        Texts{"bookmark", "show", "-AAA"},
        Texts{"bookmark", "show", "--file"},
        Texts{"bookmark", "show", "--file=/", "AAAA"},
        Texts{"bookmark", "show", "--verbose", "AAAA"},
        Texts{"bookmark", "resolve", "--json", "--verbose", "AAAA"}));

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
