#include "cli/Program.h"

#include "tests/cli/CliProgram.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::tests {
namespace {

using cli::ExitStatus;
using namespace std::string_literals;

class ProgramTest : public CliProgram {
protected:
    static std::string tenThousandTimes(const std::string& name) {
        std::string list;
        for (int i = 0; i < 10'000; ++i) {
            list += name + '\0';
        }
        return list;
    }
};

TEST_F(ProgramTest, printsTheReportOfTheDetailsWindowAndOneLineFeed) {
    const std::string report = printed("report a.txt");
    url = platform::URL::fileURLWithPath("/here/a.txt");
    session.time = 0;
    open();
    controller().buildReport();
    EXPECT_EQ(report, controller().saveString() + "\n");
}

TEST_F(ProgramTest, putsABlankLineBetweenReports) {
    const std::string reports = printed("report a /else/where");
    EXPECT_TRUE(reports.contains("00:00:00 +0000\n\nDetails for file where\nPath: /else/where\n"));
    EXPECT_TRUE(reports.ends_with("00:00:01 +0000\n"));
}

TEST_F(ProgramTest, writesEachReportAsSoonAsItIsDone) {
    run("report a b c");
    EXPECT_EQ(output.writes, 3U);
    run("report --json --files0-from=-", "a\0b\0"s);
    EXPECT_EQ(output.writes, 5U);
}

TEST_F(ProgramTest, reportsTheOthersWhenAFileIsMissingOrANameIsEmpty) {
    EXPECT_EQ(run({"report", "a", "missing", "", "b"}), ExitStatus::failure);
    EXPECT_EQ(
        errors.text, "tolvane-cli: missing: No such file or directory\n"
                     "tolvane-cli: '': No such file or directory\n");
    EXPECT_TRUE(output.text.contains("\n\nDetails for file b\n"));
}

TEST_F(ProgramTest, keepsAComplaintToOneLine) {
    run({"report", "missing\n\x1B", "missing\x1B"});
    EXPECT_EQ(
        errors.text, "tolvane-cli: missing\\n\\x1b: No such file or directory\n"
                     "tolvane-cli: missing\x1B: No such file or directory\n");
    errors.terminal = true;
    run({"report", "missing\x1B"});
    EXPECT_EQ(errors.text, "tolvane-cli: missing\\x1b: No such file or directory\n");
}

TEST_F(ProgramTest, escapesNamesOnATerminalOnly) {
    run({"report", "a\x1B"});
    EXPECT_TRUE(output.text.starts_with("Details for file a\x1B\n"));
    output.terminal = true;
    run({"report", "a\x1B"});
    EXPECT_TRUE(output.text.starts_with("Details for file a\\x1b\nPath: /here/a\\x1b\n"));
}

TEST_F(ProgramTest, needsACurrentFolderForRelativeNamesOnly) {
    folder = std::unexpected(platform::posixError(ENOENT));
    EXPECT_EQ(run("report /absolute relative"), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: relative: No such file or directory\n");
    EXPECT_TRUE(output.text.starts_with("Details for file absolute\n"));
}

TEST_F(ProgramTest, readsNamesFromAFileOrStandardInput) {
    files["/lists/names"] = "a\0b c\0"s;
    EXPECT_TRUE(printed("report --files0-from=/lists/names").contains("Details for file b c\n"));
    EXPECT_EQ(run("report --files0-from=-", "x\0missing"s), ExitStatus::failure);
    EXPECT_TRUE(output.text.starts_with("Details for file x\n"));
    EXPECT_EQ(errors.text, "tolvane-cli: missing: No such file or directory\n");
    EXPECT_EQ(printed("report --files0-from=-"), "") << "the list is empty";
    EXPECT_EQ(complaint("report --files0-from=nowhere"), "tolvane-cli: nowhere: No such file or directory\n");
}

TEST_F(ProgramTest, endsWithAMessageWhenOutputFails) {
    output.capacity = 10;
    const std::string noSpace = "tolvane-cli: standard output: No space left on device\n";
    EXPECT_EQ(complaint("report a b"), noSpace);
    EXPECT_EQ(complaint("--help"), noSpace);
}

TEST_F(ProgramTest, stopsAskingForNamesOnceOutputHasFailed) {
    output.capacity = 0;
    output.failure = platform::posixError(EPIPE);
    EXPECT_EQ(
        complaint("report --files0-from=-", tenThousandTimes("name")),
        "tolvane-cli: standard output: Broken pipe\n");
    EXPECT_LT(log.size(), 10'000U);
}

TEST_F(ProgramTest, refusesANameThatWasCutRatherThanReportingOnItsBeginning) {
    const std::string slashes(9'000, '/');
    EXPECT_EQ(run("report --files0-from=-", slashes + "a\0b"s), ExitStatus::failure);
    EXPECT_TRUE(errors.text.ends_with("/: File name too long\n"));
    EXPECT_TRUE(output.text.starts_with("Details for file b\n"));
}

TEST_F(ProgramTest, endsWhenAFailureCannotBeReported) {
    errors.capacity = 0;
    complaint("report --files0-from=-", tenThousandTimes("missing") + "b");
    EXPECT_EQ(errors.writes, 1U);
}

TEST_F(ProgramTest, printsJsonObjectsLineByLine) {
    const std::string objects = printed("report --json a b");
    EXPECT_EQ(std::ranges::count(objects, '\n'), 2);
    EXPECT_TRUE(objects.starts_with("{\"pathTextbox\":\"/here/a\","));
}

TEST_F(ProgramTest, endsWithTwoForWrongUsage) {
    EXPECT_EQ(run("report --wrong"), ExitStatus::wrongUsage);
    EXPECT_TRUE(errors.text.starts_with("tolvane-cli: "));
    EXPECT_TRUE(errors.text.contains("--wrong"));
    EXPECT_EQ(output.text, "");
}

} // namespace
} // namespace tolvane::tests
