#include "cli/Arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace tolvane::tests {
namespace {

using cli::BookmarkMakeRequest;
using cli::BookmarkReadRequest;
using cli::BookmarkResolveRequest;
using cli::BookmarkShowRequest;
using cli::Information;
using cli::ReportRequest;
using cli::UsageError;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

template <typename Asked>
Asked requestOf(const std::vector<std::string>& arguments) {
    const cli::Request request = cli::parseArguments(arguments);
    if (const auto* error = std::get_if<UsageError>(&request)) {
        ADD_FAILURE() << error->message;
    }
    return std::get<Asked>(request);
}

ReportRequest reportRequest(const std::vector<std::string>& arguments) {
    return requestOf<ReportRequest>(arguments);
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

// An option that takes a value takes the next argument, whatever that looks like.
TEST(Arguments, takesWhatFollowsForTheValueToTheByte) {
    for (const std::string value : {"-x", "--json", "--list=a", "--files0-from=name#0", "--=", "-5"}) {
        EXPECT_EQ(reportRequest({"report", "--files0-from", value}).files0From, value);
        EXPECT_FALSE(reportRequest({"report", "--files0-from", value}).json);
        EXPECT_EQ(requestOf<BookmarkShowRequest>({"bookmark", "show", "--file", value}).origin.file, value);
        EXPECT_EQ(
            requestOf<BookmarkResolveRequest>({"bookmark", "resolve", "--file", value}).origin.file, value);
    }
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

TEST(Arguments, refusesAValueForAFlagHoweverOftenTheFlagIsGiven) {
    EXPECT_EQ(usageError({"report", "--json=maybe", "a"}), "--json: takes no value; this was given: maybe");
    for (const std::string value : {"maybe", "true", "false", "1", ""}) {
        const std::string given = "this was given: " + value;
        EXPECT_THAT(usageError({"report", "--json=" + value, "--json", "a"}), HasSubstr(given));
        EXPECT_THAT(usageError({"report", "--json", "--json=" + value, "a"}), HasSubstr(given));
        EXPECT_THAT(usageError({"bookmark", "make", "--alias=" + value, "--alias", "a"}), HasSubstr(given));
        EXPECT_THAT(usageError({"bookmark", "show", "--json=" + value, "--json"}), HasSubstr(given));
        EXPECT_THAT(usageError({"bookmark", "resolve", "--json=" + value, "--json"}), HasSubstr(given));
        EXPECT_THAT(usageError({"bookmark", "resolve", "--verbose=" + value, "--verbose"}), HasSubstr(given));
    }
    EXPECT_TRUE(reportRequest({"report", "--json", "--json", "a"}).json);
}

TEST(Arguments, suggestsTheCommandThatWasMistyped) {
    EXPECT_EQ(usageError({"reprot", "a"}), "there is no command reprot; is report meant?");
    EXPECT_EQ(usageError({"bookmarks", "show"}), "there is no command bookmarks; is bookmark meant?");
    EXPECT_EQ(
        usageError({"bookmark", "reslove", "AAAA"}), "there is no bookmark verb reslove; is resolve meant?");
    EXPECT_EQ(usageError({"bookmark", "AAAA"}), "there is no bookmark verb AAAA");
    EXPECT_EQ(usageError({"describe"}), "there is no command describe");
}

TEST(Arguments, takesAFileToMakeABookmarkOf) {
    EXPECT_EQ(requestOf<BookmarkMakeRequest>({"bookmark", "make", "a b"}).file, "a b");
    EXPECT_FALSE(requestOf<BookmarkMakeRequest>({"bookmark", "make", "a"}).alias);
    EXPECT_TRUE(requestOf<BookmarkMakeRequest>({"bookmark", "make", "--alias", "a"}).alias);
    EXPECT_TRUE(requestOf<BookmarkMakeRequest>({"bookmark", "make", "a", "--alias"}).alias);
    EXPECT_EQ(requestOf<BookmarkMakeRequest>({"bookmark", "make", "--", "--alias"}).file, "--alias");
}

TEST(Arguments, takesAnAliasFileToRead) {
    EXPECT_EQ(requestOf<BookmarkReadRequest>({"bookmark", "read", "\xFF"}).aliasFile, "\xFF");
    EXPECT_EQ(requestOf<BookmarkReadRequest>({"bookmark", "read", "--", "-x"}).aliasFile, "-x");
    EXPECT_EQ(requestOf<BookmarkReadRequest>({"bookmark", "read", "-"}).aliasFile, "-");
    EXPECT_EQ(requestOf<BookmarkReadRequest>({"bookmark", "read", ""}).aliasFile, "");
}

TEST(Arguments, takesABookmarkAsTextOrFromAFileOrFromStandardInput) {
    const auto show = [](const std::vector<std::string>& rest) {
        std::vector<std::string> arguments{"bookmark", "show"};
        arguments.insert(arguments.end(), rest.begin(), rest.end());
        return requestOf<BookmarkShowRequest>(arguments);
    };
    for (const std::string text : {"Ym9va21hcms=", "++++", "////", "show", "", "[a,b]", "a b\n", "-"}) {
        EXPECT_EQ(show({text}).origin.text, text);
        EXPECT_EQ(show({text}).origin.file, std::nullopt);
        EXPECT_EQ(show({"--file", text}).origin.file, text);
        EXPECT_EQ(show({"--file=" + text}).origin.file, text);
        EXPECT_EQ(show({"--file", text}).origin.text, std::nullopt);
    }
    EXPECT_EQ(show({"--", "--json"}).origin.text, "--json");
    EXPECT_EQ(show({}).origin.text, std::nullopt);
    EXPECT_EQ(show({"--json"}).origin.file, std::nullopt);
    EXPECT_TRUE(show({"--json"}).json);
    EXPECT_FALSE(show({}).json);
}

TEST(Arguments, takesABookmarkToResolve) {
    const auto verbose = requestOf<BookmarkResolveRequest>({"bookmark", "resolve", "--verbose", "AAAA"});
    EXPECT_TRUE(verbose.verbose);
    EXPECT_FALSE(verbose.json);
    EXPECT_EQ(verbose.origin.text, "AAAA");
    const auto json = requestOf<BookmarkResolveRequest>({"bookmark", "resolve", "--file=a", "--json"});
    EXPECT_TRUE(json.json);
    EXPECT_FALSE(json.verbose);
    EXPECT_EQ(json.origin.file, "a");
}

TEST(Arguments, refusesBookmarkRequestsThatMakeNoSense) {
    EXPECT_EQ(usageError({"bookmark"}), "bookmark: no verb is given; there are make, read, show and resolve");
    EXPECT_THAT(usageError({"bookmark", "--json"}), HasSubstr("no verb is given"));
    EXPECT_EQ(usageError({"bookmark", "make"}), "bookmark make: no file is named");
    EXPECT_EQ(usageError({"bookmark", "make", "--alias"}), "bookmark make: no file is named");
    EXPECT_EQ(usageError({"bookmark", "read"}), "bookmark read: no alias file is named");
    EXPECT_THAT(usageError({"bookmark", "make", "a", "[b]"}), HasSubstr("not expected: [b]"));
    EXPECT_THAT(usageError({"bookmark", "make", "a", "name#0"}), EndsWith("not expected: name#0"));
    EXPECT_THAT(usageError({"bookmark", "make", "a", "--name#0"}), EndsWith("not expected: --name#0"));
    EXPECT_THAT(usageError({"bookmark", "make", "---alias=a"}), EndsWith("not expected: ---alias=a"));
    EXPECT_THAT(usageError({"report", "---file=a"}), EndsWith("not expected: ---file=a"));
    EXPECT_THAT(usageError({"bookmark", "read", "a", "b"}), HasSubstr("not expected: b"));
    EXPECT_THAT(usageError({"bookmark", "show", "a", "b"}), HasSubstr("not expected: b"));
    EXPECT_THAT(usageError({"bookmark", "show", "-5"}), HasSubstr("-5"));
    EXPECT_THAT(usageError({"bookmark", "read", "-5"}), HasSubstr("-5"));
    EXPECT_THAT(usageError({"bookmark", "show", "a", "--file", "b"}), HasSubstr("--file"));
    EXPECT_THAT(usageError({"bookmark", "resolve", "a", "--file", "b"}), HasSubstr("--file"));
    EXPECT_THAT(usageError({"bookmark", "show", "--file"}), HasSubstr("--file"));
    EXPECT_THAT(usageError({"bookmark", "resolve", "--json", "--verbose", "a"}), HasSubstr("--verbose"));
    EXPECT_THAT(usageError({"bookmark", "show", "--verbose", "a"}), HasSubstr("--verbose"));
    EXPECT_THAT(usageError({"bookmark", "make", "--json", "a"}), HasSubstr("--json"));
    EXPECT_THAT(usageError({"bookmark", "show", "--jsn"}), HasSubstr("--jsn"));
}

TEST(Arguments, answersHelpForEveryBookmarkVerb) {
    EXPECT_THAT(information({"bookmark", "--help"}), HasSubstr("Usage: tolvane-cli bookmark"));
    EXPECT_THAT(information({"bookmark", "make", "--help"}), HasSubstr("Usage: tolvane-cli bookmark make"));
    EXPECT_THAT(information({"bookmark", "make", "--help"}), HasSubstr("--alias"));
    EXPECT_THAT(information({"bookmark", "read", "--help"}), HasSubstr("ALIASFILE"));
    EXPECT_THAT(information({"bookmark", "show", "x", "--help"}), HasSubstr("--file F"));
    EXPECT_THAT(information({"bookmark", "resolve", "--help"}), HasSubstr("--verbose"));
    EXPECT_THAT(information({"--help"}), HasSubstr("bookmark"));
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
