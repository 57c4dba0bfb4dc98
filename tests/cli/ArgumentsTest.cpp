#include "cli/Arguments.h"

#include "tests/cli/Words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace tolvane::tests {
namespace {

using cli::BookmarkFindRequest;
using cli::BookmarkMakeRequest;
using cli::BookmarkReadRequest;
using cli::BookmarkResolveRequest;
using cli::BookmarkShowRequest;
using cli::ReportRequest;
using cli::UsageError;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

template <typename Asked>
Asked requestOf(const Words& arguments) {
    const cli::Request request = cli::parseArguments(arguments);
    if (const auto* error = std::get_if<UsageError>(&request)) {
        ADD_FAILURE() << error->message;
    }
    return std::get<Asked>(request);
}

ReportRequest reportRequest(const Words& arguments) {
    return requestOf<ReportRequest>(arguments);
}

std::string usageError(const Words& arguments) {
    const cli::Request request = cli::parseArguments(arguments);
    const auto* error = std::get_if<UsageError>(&request);
    if (error == nullptr) {
        ADD_FAILURE() << "the arguments were accepted";
    }
    return error != nullptr ? error->message : std::string();
}

std::string information(const Words& arguments) {
    return std::get<cli::Information>(cli::parseArguments(arguments)).text;
}

TEST(Arguments, takesFileNamesInOrder) {
    const ReportRequest request = reportRequest("report b a b");
    EXPECT_THAT(request.names, ElementsAre("b", "a", "b"));
    EXPECT_FALSE(request.json);
    EXPECT_EQ(request.files0From, std::nullopt);
}

TEST(Arguments, takesAnyBytesAsAFileName) {
    const std::vector<std::string> odd{"[a,b]", "++",     "report", "-",       "",     "a b",
                                       "x\ny",  "\xFF",   "name#1", "name#99", "%%",   "a=b",
                                       "{}",    "'quote", "\"",     "@file",   "[,]x", "[]"};
    Words arguments = "report";
    arguments.insert(arguments.end(), odd.begin(), odd.end());
    EXPECT_EQ(reportRequest(arguments).names, odd);
}

TEST(Arguments, takesEverythingAfterTwoDashesAsNames) {
    EXPECT_THAT(
        reportRequest("report a -- --json -x -- [b] --help").names,
        ElementsAre("a", "--json", "-x", "--", "[b]", "--help"));
}

TEST(Arguments, takesOptionsBetweenNames) {
    const ReportRequest request = reportRequest("report a --json b");
    EXPECT_TRUE(request.json);
    EXPECT_FALSE(request.explain);
    EXPECT_THAT(request.names, ElementsAre("a", "b"));
    EXPECT_TRUE(reportRequest("report --explain a").explain);
}

TEST(Arguments, takesTheListFileInBothForms) {
    for (const std::string list : {"list", "-", "[a,b]", "name#1", "a=b", ""}) {
        EXPECT_EQ(reportRequest({"report", "--files0-from=" + list}).files0From, list);
        EXPECT_EQ(reportRequest({"report", "--files0-from", list}).files0From, list);
    }
}

// An option that takes a value takes the next argument, whatever that looks like.
TEST(Arguments, readsTheNextArgumentAsTheValueWhateverItIs) {
    for (const std::string value : {"-x", "--json", "--list=a", "--files0-from=name#0", "--=", "-5"}) {
        EXPECT_EQ(reportRequest({"report", "--files0-from", value}).files0From, value);
        EXPECT_FALSE(reportRequest({"report", "--files0-from", value}).json);
        EXPECT_EQ(requestOf<BookmarkShowRequest>({"bookmark", "show", "--file", value}).origin.file, value);
        EXPECT_EQ(
            requestOf<BookmarkResolveRequest>({"bookmark", "resolve", "--file", value}).origin.file, value);
    }
}

TEST(Arguments, takesManyNamesToFindBookmarksIn) {
    const auto request = requestOf<BookmarkFindRequest>("bookmark find a --recursive --json -- -b");
    EXPECT_THAT(request.names, ElementsAre("a", "-b"));
    EXPECT_TRUE(request.recursive);
    EXPECT_TRUE(request.json);
    EXPECT_FALSE(request.allVolumes);
    EXPECT_TRUE(requestOf<BookmarkFindRequest>("bookmark find --recursive --all-volumes a").allVolumes);
}

TEST(Arguments, takesTheNumberOfABookmarkInAFile) {
    const auto show = requestOf<BookmarkShowRequest>("bookmark show --file a --at 12");
    EXPECT_EQ(show.origin.at, 12U);
    EXPECT_EQ(requestOf<BookmarkReadRequest>("bookmark read --at=0 a").at, 0U);
    EXPECT_EQ(requestOf<BookmarkReadRequest>("bookmark read a").at, std::nullopt);
    for (const std::string wrong : {"-1", "+1", "", " 1", "1 ", "two", "99999999999999999999"}) {
        EXPECT_EQ(
            usageError({"bookmark", "read", "a", "--at", wrong}),
            "bookmark read: --at needs a number from 0 on; this was given: " + wrong);
    }
}

TEST(Arguments, takesEveryBookmarkInAFile) {
    const auto resolve = requestOf<BookmarkResolveRequest>("bookmark resolve --all --file a");
    EXPECT_TRUE(resolve.all);
    EXPECT_EQ(requestOf<BookmarkReadRequest>("bookmark read --extract -d a").extractFolder, "-d");
}

TEST(Arguments, takesTheNumberOfThreads) {
    EXPECT_EQ(reportRequest("report a").jobs, std::nullopt);
    EXPECT_EQ(reportRequest("report a --jobs 1").jobs, 1U);
    EXPECT_EQ(reportRequest("report --jobs=1024 a").jobs, 1024U);
    EXPECT_EQ(requestOf<cli::AttributesRequest>("attributes a --jobs 2").jobs, 2U);
    EXPECT_EQ(requestOf<BookmarkFindRequest>("bookmark find a --jobs 2").jobs, 2U);
    for (const std::string wrong : {"0", "1025", "-1", "+1", "", " 1", "1 ", "two", "99999999999999999999"}) {
        EXPECT_EQ(
            usageError({"report", "a", "--jobs", wrong}),
            "report: --jobs needs a number from 1 to 1024; this was given: " + wrong);
        EXPECT_THAT(usageError({"attributes", "a", "--jobs", wrong}), HasSubstr("--jobs needs a number"));
        EXPECT_THAT(usageError({"bookmark", "find", "a", "--jobs", wrong}), HasSubstr("--jobs needs"));
    }
}

TEST(Arguments, refusesWhatItDoesNotKnowAndNamesTheVerb) {
    const std::string noVerb = "bookmark: no verb is given; there are make, read, show, resolve and find";
    const std::string noValue = "attributes: --explain needs the value: either --hex or --value-file";
    const std::string withFiles = "attributes: --explain cannot be combined with files";
    const std::string notAFlag = " takes no value; this was given: maybe";
    for (const auto& [arguments, message] : std::vector<std::pair<Words, std::string>>{
             {{}, "no command is given"},
             {"--", "no command is given"},
             {"--wrong report", "there is no option --wrong"},
             {{"", "a file"}, "there is no command "},
             {{"inspect", "a file"}, "there is no command inspect"},
             {"describe", "there is no command describe"},
             {"reprot a", "there is no command reprot; is report meant?"},
             {"bookmarks show", "there is no command bookmarks; is bookmark meant?"},
             {"report a --jsn", "report: there is no option --jsn; is --json meant?"},
             {"report -5 a", "report: there is no option -5"},
             {"report --version", "report: there is no option --version"},
             {"report --files0-from", "report: --files0-from needs a value"},
             {"report --files0-from=list a b", "report: a cannot be combined with --files0-from"},
             {"report --json=maybe --json a", "report: --json" + notAFlag},
             {"report --explain --json a",
              "report: --explain cannot be combined with --json; 'attributes --json' prints the words"},
             {"report", "report: no file is named"},
             {"report --json", "report: no file is named"},
             {"report --", "report: no file is named"},
             {"attributes --explain user.a --hex 00 --jobs 2",
              "attributes: --explain cannot be combined with --jobs"},
             {"attributes --verify --explain a --hex=00",
              "attributes: --explain cannot be combined with --verify"},
             {"attributes", "attributes: no file is named"},
             {"attributes a --files0-from=b", "attributes: a cannot be combined with --files0-from"},
             {"attributes --hex=00 a", "attributes: --hex needs --explain with the attribute's name"},
             {"attributes --value-file=a",
              "attributes: --value-file needs --explain with the attribute's name"},
             {"attributes --explain=x", noValue},
             {"attributes --explain=x --hex=0 --value-file=a", noValue},
             {"attributes --explain=x --hex=00 a", withFiles},
             {"attributes --explain=x --hex=00 --files0-from=a", withFiles},
             {"bookmark", noVerb},
             {"bookmark -- show", noVerb},
             {"bookmark --json", "bookmark: there is no option --json"},
             {"bookmark reslove AAAA", "there is no bookmark verb reslove; is resolve meant?"},
             {"bookmark AAAA", "there is no bookmark verb AAAA"},
             {"bookmark make", "bookmark make: no file is named"},
             {"bookmark make --alias", "bookmark make: no file is named"},
             {"bookmark make a [b]", "bookmark make: [b] is one argument too many"},
             {"bookmark make --json a", "bookmark make: there is no option --json"},
             {"bookmark make --alias=maybe a", "bookmark make: --alias" + notAFlag},
             {"bookmark read --", "bookmark read: no alias file is named"},
             {"bookmark read a -- -b", "bookmark read: -b is one argument too many"},
             {"bookmark read a --at 1 --extract d", "bookmark read: --at cannot be combined with --extract"},
             {"bookmark show --verbose", "bookmark show: there is no option --verbose"},
             {"bookmark show --json=maybe", "bookmark show: --json" + notAFlag},
             {"bookmark show a b c", "bookmark show: b is one argument too many"},
             {"bookmark show a --file b", "bookmark show: a text cannot be combined with --file"},
             {"bookmark show --at 1", "bookmark show: --at needs --file"},
             {{"bookmark", "resolve", "--file=", ""},
              "bookmark resolve: a text cannot be combined with --file"},
             {"bookmark resolve --file=a --file=b", "bookmark resolve: --file can be given only once"},
             {"bookmark resolve --json=maybe", "bookmark resolve: --json" + notAFlag},
             {"bookmark resolve --verbose=maybe", "bookmark resolve: --verbose" + notAFlag},
             {"bookmark resolve --json --verbose a",
              "bookmark resolve: --verbose cannot be combined with --json"},
             {"bookmark resolve --at 1 AAAA", "bookmark resolve: --at needs --file"},
             {"bookmark resolve --all AAAA", "bookmark resolve: --all needs --file"},
             {"bookmark resolve --all --file a --at 1",
              "bookmark resolve: --all cannot be combined with --at"},
             {"bookmark resolve --all --file a --verbose",
              "bookmark resolve: --all cannot be combined with --verbose"},
             {"bookmark find", "bookmark find: no file is named"},
             {"bookmark find --all-volumes a", "bookmark find: --all-volumes needs --recursive"}}) {
        EXPECT_EQ(usageError(arguments), message) << testing::PrintToString(arguments);
    }
    EXPECT_TRUE(reportRequest("report --json --json a").json) << "a flag may be given again";
}

TEST(Arguments, takesAFileToMakeABookmarkOf) {
    EXPECT_EQ(requestOf<BookmarkMakeRequest>({"bookmark", "make", "a b"}).file, "a b");
    EXPECT_FALSE(requestOf<BookmarkMakeRequest>("bookmark make a").alias);
    EXPECT_TRUE(requestOf<BookmarkMakeRequest>("bookmark make --alias a").alias);
    EXPECT_TRUE(requestOf<BookmarkMakeRequest>("bookmark make a --alias").alias);
    EXPECT_EQ(requestOf<BookmarkMakeRequest>("bookmark make -- --alias").file, "--alias");
}

TEST(Arguments, takesAnAliasFileToRead) {
    for (const std::string file : {"\xFF", "-", ""}) {
        EXPECT_EQ(requestOf<BookmarkReadRequest>({"bookmark", "read", file}).aliasFile, file);
    }
    EXPECT_EQ(requestOf<BookmarkReadRequest>("bookmark read -- -x").aliasFile, "-x");
}

TEST(Arguments, takesABookmarkAsTextOrFromAFileOrFromStandardInput) {
    const auto show = [](const Words& rest) {
        Words arguments{"bookmark", "show"};
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
    const auto verbose = requestOf<BookmarkResolveRequest>("bookmark resolve --verbose AAAA");
    EXPECT_TRUE(verbose.verbose);
    EXPECT_FALSE(verbose.json);
    EXPECT_EQ(verbose.origin.text, "AAAA");
    const auto json = requestOf<BookmarkResolveRequest>("bookmark resolve --file=a --json");
    EXPECT_TRUE(json.json);
    EXPECT_FALSE(json.verbose);
    EXPECT_EQ(json.origin.file, "a");
}

TEST(Arguments, printsTheHelpOfEveryVerb) {
    for (const std::string verb : {"make", "read", "show", "resolve"}) {
        EXPECT_THAT(
            information({"bookmark", verb, "x", "--help"}),
            StartsWith("Usage: tolvane-cli bookmark " + verb));
        EXPECT_THAT(information({"bookmark", "-h", verb}), HasSubstr("\n  " + verb + " "));
    }
    EXPECT_THAT(information("report x -h"), StartsWith("Usage: tolvane-cli report "));
    EXPECT_EQ(
        information("--help"),
        "Usage: tolvane-cli COMMAND\n"
        "Shows the facts that a file system keeps about files, and decodes bookmarks\n"
        "\n"
        "  report      Prints the details report of each file\n"
        "  attributes  Prints what the extended attributes of each file mean\n"
        "  bookmark    Makes, reads, shows, resolves or finds bookmarks\n"
        "  -h, --help  Prints this help and exits\n"
        "  --version   Prints the version and exits\n"
        "\n"
        "Exit status: 0 if everything requested was printed, 1 if something could not be, 2 for wrong "
        "usage.\n");
    EXPECT_THAT(information("--version"), testing::MatchesRegex("tolvane-cli [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(Arguments, takeAttributesOfFiles) {
    const auto request = requestOf<cli::AttributesRequest>("attributes a --json -- --explain");
    EXPECT_THAT(request.names, ElementsAre("a", "--explain"));
    EXPECT_TRUE(request.json);
    EXPECT_FALSE(request.verify);
    EXPECT_EQ(requestOf<cli::AttributesRequest>("attributes --files0-from=-").files0From, "-");
    EXPECT_TRUE(requestOf<cli::AttributesRequest>("attributes a --verify").verify);
}

TEST(Arguments, takeAValueFromElsewhere) {
    const auto request = requestOf<cli::AttributesExplainRequest>("attributes --explain user.x --hex=00");
    EXPECT_EQ(request.name, "user.x");
    EXPECT_EQ(request.hex, "00");
    EXPECT_EQ(request.valueFile, std::nullopt);
    EXPECT_FALSE(request.json);
    const auto other =
        requestOf<cli::AttributesExplainRequest>("attributes --json --explain= --value-file -");
    EXPECT_EQ(other.name, "");
    EXPECT_EQ(other.valueFile, "-");
    EXPECT_TRUE(other.json);
}

} // namespace
} // namespace tolvane::tests
