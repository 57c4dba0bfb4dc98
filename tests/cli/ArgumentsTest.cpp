#include "cli/Arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace tolvane::tests {
namespace {

using cli::Information;
using cli::ReportRequest;
using cli::UsageError;
using testing::ElementsAre;
using testing::HasSubstr;

ReportRequest reportRequest(const std::vector<std::string>& arguments) {
    const cli::Request request = cli::parseArguments(arguments);
    if (const auto* error = std::get_if<UsageError>(&request)) {
        ADD_FAILURE() << error->message;
    }
    return std::get<ReportRequest>(request);
}

std::string usageError(const std::vector<std::string>& arguments) {
    const cli::Request request = cli::parseArguments(arguments);
    const auto* error = std::get_if<UsageError>(&request);
    if (error == nullptr) {
        ADD_FAILURE() << "the arguments were accepted";
    }
    return error != nullptr ? error->message : std::string();
}

std::string information(const std::vector<std::string>& arguments) {
    return std::get<Information>(cli::parseArguments(arguments)).text;
}

TEST(Arguments, takesFileNamesInOrder) {
    const ReportRequest request = reportRequest({"report", "b", "a", "b"});
    EXPECT_THAT(request.names, ElementsAre("b", "a", "b"));
    EXPECT_FALSE(request.json);
    EXPECT_EQ(request.files0From, std::nullopt);
}

TEST(Arguments, takesAnyBytesAsAFileName) {
    const std::vector<std::string> odd{"[a,b]", "++",     "report", "-",       "",     "a b",
                                       "x\ny",  "\xFF",   "name#1", "name#99", "%%",   "a=b",
                                       "{}",    "'quote", "\"",     "@file",   "[,]x", "[]"};
    std::vector<std::string> arguments{"report"};
    arguments.insert(arguments.end(), odd.begin(), odd.end());
    EXPECT_EQ(reportRequest(arguments).names, odd);
}

TEST(Arguments, takesEverythingAfterTwoDashesAsNames) {
    EXPECT_THAT(
        reportRequest({"report", "a", "--", "--json", "-x", "--", "[b]", "--help"}).names,
        ElementsAre("a", "--json", "-x", "--", "[b]", "--help"));
}

TEST(Arguments, takesOptionsBetweenNames) {
    const ReportRequest request = reportRequest({"report", "a", "--json", "b"});
    EXPECT_TRUE(request.json);
    EXPECT_THAT(request.names, ElementsAre("a", "b"));
}

TEST(Arguments, takesTheListFileInBothForms) {
    EXPECT_EQ(reportRequest({"report", "--files0-from=list"}).files0From, "list");
    EXPECT_EQ(reportRequest({"report", "--files0-from", "list"}).files0From, "list");
    EXPECT_EQ(reportRequest({"report", "--files0-from=-"}).files0From, "-");
    EXPECT_EQ(reportRequest({"report", "--files0-from", "-"}).files0From, "-");
    EXPECT_EQ(reportRequest({"report", "--files0-from=[a,b]", "--json"}).files0From, "[a,b]");
    EXPECT_EQ(reportRequest({"report", "--files0-from", "[a,b]"}).files0From, "[a,b]");
    EXPECT_EQ(reportRequest({"report", "--files0-from=name#1"}).files0From, "name#1");
    EXPECT_EQ(reportRequest({"report", "--files0-from=a=b"}).files0From, "a=b");
    EXPECT_EQ(reportRequest({"report", "--files0-from="}).files0From, "");
}

TEST(Arguments, refusesNamesBesideAList) {
    EXPECT_THAT(usageError({"report", "--files0-from=list", "a"}), HasSubstr("--files0-from"));
}

TEST(Arguments, refusesToReportOnNothing) {
    EXPECT_THAT(usageError({"report"}), HasSubstr("no file is named"));
    EXPECT_THAT(usageError({"report", "--json"}), HasSubstr("no file is named"));
    EXPECT_THAT(usageError({"report", "--"}), HasSubstr("no file is named"));
}

TEST(Arguments, namesTheArgumentItDoesNotKnow) {
    EXPECT_THAT(usageError({"report", "a", "--jsn"}), HasSubstr("--jsn"));
    EXPECT_THAT(usageError({"report", "-x"}), HasSubstr("-x"));
    EXPECT_THAT(usageError({"report", "a", "-5"}), HasSubstr("-5"));
    EXPECT_THAT(usageError({"inspect", "a file"}), HasSubstr("inspect"));
    EXPECT_THAT(usageError({"", "a file"}), HasSubstr("there is no command"));
    EXPECT_EQ(usageError({}), "no command is given");
    EXPECT_THAT(usageError({"--wrong"}), HasSubstr("--wrong"));
    EXPECT_NE(usageError({"report", "--files0-from"}), "");
    EXPECT_THAT(usageError({"report", "--json=maybe", "a"}), HasSubstr("maybe"));
    EXPECT_THAT(usageError({"report", "--jsn=maybe", "a"}), HasSubstr("--jsn=maybe"));
}

TEST(Arguments, answersHelpAndVersion) {
    EXPECT_THAT(information({"--help"}), HasSubstr("report"));
    EXPECT_THAT(information({"--help"}), HasSubstr("Exit status"));
    EXPECT_THAT(information({"report", "--help"}), HasSubstr("Usage: tolvane-cli report"));
    EXPECT_THAT(information({"report", "--help"}), HasSubstr("--files0-from"));
    EXPECT_THAT(information({"report", "x", "--help"}), testing::EndsWith("'--'.\n"));
    EXPECT_THAT(information({"--version"}), testing::MatchesRegex("tolvane-cli [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

} // namespace
} // namespace tolvane::tests
