#include "cli/Program.h"

#include "tests/cli/CliProgram.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

namespace tolvane::tests {
namespace {

using cli::ExitStatus;
using namespace std::string_literals;

class ProgramTest : public CliProgram {};

TEST_F(ProgramTest, printsTheReportOfTheDetailsWindowAndOneLineFeed) {
    EXPECT_EQ(run({"report", "a.txt"}), ExitStatus::success);
    url = platform::URL::fileURLWithPath("/here/a.txt");
    session.time = 0;
    open();
    controller().buildReport();
    EXPECT_EQ(output.text, controller().saveString() + "\n");
    EXPECT_EQ(errors.text, "");
}

TEST_F(ProgramTest, putsABlankLineBetweenReports) {
    EXPECT_EQ(run({"report", "a", "/else/where"}), ExitStatus::success);
    EXPECT_NE(
        output.text.find("00:00:00 +0000\n\nDetails for file where\nPath: /else/where\n"), std::string::npos);
    EXPECT_TRUE(output.text.ends_with("00:00:01 +0000\n"));
}

TEST_F(ProgramTest, writesEachReportAsSoonAsItIsDone) {
    run({"report", "a", "b", "c"});
    EXPECT_EQ(output.writes, 3U);
    run({"report", "--json", "--files0-from=-"}, "a\0b\0"s);
    EXPECT_EQ(output.writes, 5U);
}

TEST_F(ProgramTest, reportsTheOthersWhenAFileIsMissing) {
    EXPECT_EQ(run({"report", "a", "missing", "b"}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: missing: No such file or directory\n");
    EXPECT_NE(output.text.find("\n\nDetails for file b\n"), std::string::npos);
}

TEST_F(ProgramTest, startsWithoutABlankLineWhenTheFirstFileIsMissing) {
    run({"report", "missing", "b"});
    EXPECT_TRUE(output.text.starts_with("Details for file b\n"));
}

TEST_F(ProgramTest, keepsAComplaintToOneLine) {
    run({"report", "missing\n\x1B", "missing\x1B"});
    EXPECT_EQ(
        errors.text, "tolvane-cli: missing\\n\\x1b: No such file or directory\n"
                     "tolvane-cli: missing\x1B: No such file or directory\n");
    errors.text.clear();
    errors.terminal = true;
    run({"report", "missing\x1B"});
    EXPECT_EQ(errors.text, "tolvane-cli: missing\\x1b: No such file or directory\n");
}

TEST_F(ProgramTest, escapesNamesOnATerminalOnly) {
    run({"report", "a\x1B"});
    EXPECT_TRUE(output.text.starts_with("Details for file a\x1B\n"));
    output.text.clear();
    output.terminal = true;
    run({"report", "a\x1B"});
    EXPECT_TRUE(output.text.starts_with("Details for file a\\x1b\nPath: /here/a\\x1b\n"));
}

TEST_F(ProgramTest, complainsOfAnEmptyName) {
    EXPECT_EQ(run({"report", "", "b"}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: '': No such file or directory\n");
    EXPECT_TRUE(output.text.starts_with("Details for file b\n"));
}

TEST_F(ProgramTest, needsACurrentFolderForRelativeNamesOnly) {
    folder = std::unexpected(platform::posixError(ENOENT));
    EXPECT_EQ(run({"report", "/absolute", "relative"}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: relative: No such file or directory\n");
    EXPECT_TRUE(output.text.starts_with("Details for file absolute\n"));
}

TEST_F(ProgramTest, readsNamesFromAFileOrStandardInput) {
    files["/lists/names"] = "a\0b c\0"s;
    EXPECT_EQ(run({"report", "--files0-from=/lists/names"}), ExitStatus::success);
    EXPECT_NE(output.text.find("Details for file b c\n"), std::string::npos);
    output.text.clear();
    EXPECT_EQ(run({"report", "--files0-from=-"}, "x\0missing"s), ExitStatus::failure);
    EXPECT_TRUE(output.text.starts_with("Details for file x\n"));
    EXPECT_EQ(errors.text, "tolvane-cli: missing: No such file or directory\n");
}

TEST_F(ProgramTest, reportsNothingForAnEmptyList) {
    EXPECT_EQ(run({"report", "--files0-from=-"}), ExitStatus::success);
    EXPECT_EQ(output.text, "");
    EXPECT_EQ(errors.text, "");
}

TEST_F(ProgramTest, namesAListThatCannotBeOpened) {
    EXPECT_EQ(run({"report", "--files0-from=nowhere"}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: nowhere: No such file or directory\n");
}

TEST_F(ProgramTest, endsWithAMessageWhenOutputFails) {
    output.capacity = 10;
    EXPECT_EQ(run({"report", "a", "b"}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: standard output: No space left on device\n");
    errors.text.clear();
    EXPECT_EQ(run({"--help"}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: standard output: No space left on device\n");
}

TEST_F(ProgramTest, stopsAskingForNamesOnceOutputHasFailed) {
    output.capacity = 0;
    output.failure = platform::posixError(EPIPE);
    std::string list;
    for (int i = 0; i < 10'000; ++i) {
        list += "name\0"s;
    }
    EXPECT_EQ(run({"report", "--files0-from=-"}, list), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: standard output: Broken pipe\n");
    EXPECT_LT(log.size(), 10'000U);
}

TEST_F(ProgramTest, refusesANameThatWasCutRatherThanReportingOnItsBeginning) {
    const std::string slashes(9'000, '/');
    EXPECT_EQ(run({"report", "--files0-from=-"}, slashes + "a\0b"s), ExitStatus::failure);
    EXPECT_TRUE(errors.text.ends_with("/: File name too long\n"));
    EXPECT_TRUE(output.text.starts_with("Details for file b\n"));
}

TEST_F(ProgramTest, endsWhenNobodyCanBeToldOfAFailure) {
    errors.capacity = 0;
    std::string list;
    for (int i = 0; i < 10'000; ++i) {
        list += "missing\0"s;
    }
    EXPECT_EQ(run({"report", "--files0-from=-"}, list + "b"), ExitStatus::failure);
    EXPECT_EQ(output.text, "");
    EXPECT_EQ(errors.writes, 1U);
}

TEST_F(ProgramTest, printsJsonObjectsLineByLine) {
    EXPECT_EQ(run({"report", "--json", "a", "b"}), ExitStatus::success);
    EXPECT_EQ(std::ranges::count(output.text, '\n'), 2);
    EXPECT_TRUE(output.text.starts_with("{\"pathTextbox\":\"/here/a\","));
}

TEST_F(ProgramTest, answersWrongUsageWithTwo) {
    EXPECT_EQ(run({"report", "--wrong"}), ExitStatus::wrongUsage);
    EXPECT_TRUE(errors.text.starts_with("tolvane-cli: "));
    EXPECT_NE(errors.text.find("--wrong"), std::string::npos);
    EXPECT_EQ(output.text, "");
}

} // namespace
} // namespace tolvane::tests
