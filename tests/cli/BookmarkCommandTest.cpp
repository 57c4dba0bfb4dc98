#include "cli/BookmarkCommand.h"

#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "resolver/AnalyseBookmark.h"
#include "tests/cli/CliProgram.h"
#include "tests/cli/WrittenJson.h"
#include "tests/support/BookmarkCorpus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>

namespace tolvane::tests {
namespace {

using cli::ExitStatus;
using platform::Dictionary;
using platform::URL;
using testing::ElementsAre;
using testing::HasSubstr;

class BookmarkCommandTest : public CliProgram {
protected:
    BookmarkCommandTest() {
        bookmarks.resolveTo("/data/notes.txt");
        fileManager.answer = Dictionary{
            {"NSFileSystemNumber", std::uint64_t{5}}, {"NSFileSystemFileNumber", std::uint64_t{123}}};
    }

    static std::string base64(const std::string& name) { return base64Of(corpusText(name)); }

    static platform::Data bookmarkOfComponent(std::string_view component) {
        platform::SectionComposer composer;
        const std::vector<std::uint32_t> components{composer.addString(component)};
        return bookmarkWithItems(
            composer, {{platform::bookmark_key::pathComponents, composer.addArray(components), 0}});
    }

    /// The analysis as the window shows it.
    static std::string analysisOf(const std::string& name) {
        return resolver::bookmarkAnalysis(platform::readStoredProperties(corpusData(name)).properties);
    }

    const Words makeAlias = "bookmark make --alias a";
    const Words resolve{"bookmark", "resolve", base64("note.bookmark")};
    const Words resolveJson{"bookmark", "resolve", "--json", base64("note.bookmark")};
    const Words resolveVerbose{"bookmark", "resolve", "--verbose", base64("note.bookmark")};
};

// Making

TEST_F(BookmarkCommandTest, makesABookmarkOfAFileInOneLine) {
    bookmarks.made = platform::Data(300, std::byte{0xFF});
    EXPECT_EQ(printed("bookmark make a"), std::string(400, '/') + "\n");
    EXPECT_THAT(log, ElementsAre("bookmarkData /here/a"));
}

TEST_F(BookmarkCommandTest, saysWhyNoBookmarkCouldBeMade) {
    bookmarks.made = std::unexpected(platform::posixError(EIO));
    EXPECT_EQ(complaint({"bookmark", "make", "a\x1B"}), "tolvane-cli: a\x1B: Input/output error\n");
    errors.terminal = true;
    EXPECT_EQ(complaint({"bookmark", "make", "a\x1B"}), "tolvane-cli: a\\x1b: Input/output error\n");
    EXPECT_EQ(complaint({"bookmark", "make", ""}), "tolvane-cli: '': No such file or directory\n");
}

TEST_F(BookmarkCommandTest, makesAnAliasFileOfTheNewBookmark) {
    bookmarks.made = corpusData("note.bookmark");
    session.time = 700'000'100;
    const auto contents = platform::bookmarkContents(*platform::readBookmark(*bookmarks.made));
    EXPECT_EQ(
        bytesOf(printed(makeAlias)),
        platform::composeAliasFile(platform::contentsForAliasFile(contents), platform::Date(700'000'100)));
}

TEST_F(BookmarkCommandTest, sendsNoAliasFileToATerminal) {
    bookmarks.made = corpusData("note.bookmark");
    output.terminal = true;
    EXPECT_EQ(run(makeAlias), ExitStatus::wrongUsage);
    EXPECT_EQ(output.text, "");
    EXPECT_EQ(
        errors.text, "tolvane-cli: bookmark make: an alias file cannot be printed to a terminal; send it to "
                     "a file or a pipe\n");
    EXPECT_TRUE(log.empty()) << "nothing is made";
    EXPECT_EQ(run("bookmark make a"), ExitStatus::success) << "base-64 is for terminals too";
}

TEST_F(BookmarkCommandTest, saysWhyNoAliasFileCouldBeMade) {
    bookmarks.made = corpusData("bad-magic.bookmark");
    EXPECT_THAT(
        complaint(makeAlias),
        testing::StartsWith(
            "tolvane-cli: a: No alias file can be made of its bookmark: expected the letters "));
    bookmarks.made = bookmarkOfComponent("a/b");
    EXPECT_EQ(
        complaint(makeAlias), "tolvane-cli: a: No alias file can be made of its bookmark: a component of the "
                              "path names no item.\n");
    bookmarks.made = std::unexpected(platform::posixError(EACCES));
    EXPECT_EQ(complaint(makeAlias), "tolvane-cli: a: Permission denied\n");
}

// Reading

TEST_F(BookmarkCommandTest, readsTheBookmarkThatAFileHolds) {
    bookmarks.stored = bytesOf("stored bookmark");
    EXPECT_EQ(printed({"bookmark", "read", "/data/caf\xE9"}), "c3RvcmVkIGJvb2ttYXJr\n");
    EXPECT_THAT(log, ElementsAre("bookmarkDataWithContents /data/caf\xE9"));
}

TEST_F(BookmarkCommandTest, saysWhyAFileHoldsNone) {
    EXPECT_EQ(complaint({"bookmark", "read", "a\nb"}), "tolvane-cli: a\\nb: Input/output error\n");
    folder = std::unexpected(platform::posixError(ENOENT));
    EXPECT_EQ(complaint("bookmark read a"), "tolvane-cli: a: No such file or directory\n");
}

// Showing

TEST_F(BookmarkCommandTest, showsWhatTheWindowShowsAndOneLineFeed) {
    EXPECT_EQ(printed({"bookmark", "show", base64("share.bookmark")}), analysisOf("share.bookmark") + "\n");
    EXPECT_THAT(output.text, HasSubstr("NSURLVolumeNameKey = Share;\n"));
    EXPECT_TRUE(log.empty()) << "no file is looked at";
}

TEST_F(BookmarkCommandTest, showsNilForOtherBytesAndSaysWhyElsewhere) {
    const std::string nil = "nil\n\n\nnil\n";
    EXPECT_EQ(run("bookmark show AAAA"), ExitStatus::failure);
    EXPECT_EQ(output.text, nil);
    EXPECT_EQ(
        errors.text,
        "tolvane-cli: Not a readable bookmark: expected the letters \"book\" or \"alis\" at byte 0.\n");
    for (const std::string& text : {std::string(), base64("bad-record-past-end.bookmark")}) {
        EXPECT_EQ(run({"bookmark", "show", text}), ExitStatus::failure);
        EXPECT_EQ(output.text, nil);
        EXPECT_THAT(errors.text, HasSubstr("Not a readable bookmark: expected "));
    }
}

TEST_F(BookmarkCommandTest, saysWhereTextStopsBeingBase64) {
    EXPECT_EQ(
        complaint({"bookmark", "show", "Couldn't get Alias."}),
        "tolvane-cli: Couldn't analyse Bookmark. Expected at character 7: a letter, a digit, '+', '/' or "
        "the padding '='; there is \"'\".\n");
    EXPECT_EQ(
        complaint("bookmark resolve", "AAAA\nAA\r\n"),
        "tolvane-cli: standard input: Couldn't resolve Bookmark. Expected at line 2, character 3: a "
        "letter, a digit, '+', '/' or the padding '='; there is U+000D.\n");
    EXPECT_TRUE(log.empty());
}

TEST_F(BookmarkCommandTest, saysWhyItsInputCannotBeRead) {
    EXPECT_EQ(complaint("bookmark resolve --file="), "tolvane-cli: '': No such file or directory\n");
}

TEST_F(BookmarkCommandTest, escapesWhatATerminalWouldActOn) {
    output.terminal = true;
    EXPECT_EQ(printed({"bookmark", "show", base64("share.bookmark")}), analysisOf("share.bookmark") + "\n")
        << "there is nothing to escape";
    const platform::Data steering = bookmarkOfComponent("a\u202E\x1B\\b");
    EXPECT_THAT(
        printed({"bookmark", "show", platform::base64EncodedString(steering)}),
        HasSubstr(R"x(pathComponents:"( \"a\u{202e}\U001b\\\\b\" )")x"));
    std::string json = printed({"bookmark", "show", "--json", base64("share.bookmark")});
    EXPECT_EQ(json.back(), '\n');
    json.pop_back();
    EXPECT_TRUE(isPrintableAscii(json));
}

TEST_F(BookmarkCommandTest, showsOneJsonObjectOnOneLine) {
    const std::string json = printed({"bookmark", "show", "--json", base64("note.bookmark")});
    EXPECT_EQ(std::ranges::count(json, '\n'), 1);
    EXPECT_TRUE(json.ends_with("}\n"));
    EXPECT_EQ(Json::parse(json)["properties"]["NSURLNameKey"], "note.txt");
}

TEST_F(BookmarkCommandTest, saysInJsonWhatFailed) {
    const auto failure = [this](const Words& arguments) {
        EXPECT_EQ(run(arguments), ExitStatus::failure);
        return Json::parse(output.text);
    };
    EXPECT_EQ(failure("bookmark show --json AAAA"), Json::parse(R"({
        "error": "Not a readable bookmark.",
        "reason": "expected the letters \"book\" or \"alis\" at byte 0."})"));
    EXPECT_THAT(errors.text, HasSubstr("at byte 0."));
    EXPECT_EQ(failure("bookmark show --json A")["error"], "Couldn't analyse Bookmark.");
    EXPECT_EQ(failure("bookmark show --json --file nowhere"), Json::parse(R"({
        "error": "The bookmark cannot be read.",
        "reason": "No such file or directory."})"));
    EXPECT_EQ(failure("bookmark resolve --json A")["error"], "Couldn't resolve Bookmark.");
    bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    EXPECT_EQ(
        failure(resolveJson),
        Json::parse(R"({"error": "Couldn't resolve Bookmark.", "reason": "No such file or directory"})"));
}

// Resolving

TEST_F(BookmarkCommandTest, printsThePathThatTheWindowShows) {
    EXPECT_EQ(printed(resolve), "/data/notes.txt\nvolfs path : /.vol/5/123\n");
    EXPECT_EQ(bookmarks.resolvedFrom, corpusData("note.bookmark"));
    EXPECT_THAT(log, ElementsAre("resolve", "attributesOfItemAtPath /data/notes.txt"));
    fileManager.answer = Dictionary{};
    EXPECT_EQ(printed(resolve), "/data/notes.txt\n") << "there is no volume path";
}

TEST_F(BookmarkCommandTest, resolvesAnAliasFileInBareForm) {
    files["f"] = corpusText("note.alias");
    EXPECT_EQ(run("bookmark resolve --file f"), ExitStatus::success);
    EXPECT_EQ(bookmarks.resolvedFrom, corpusData("note.bookmark"));
}

TEST_F(BookmarkCommandTest, printsTheAnalysisFirstAndTheComparisonLastWhenAskedTo) {
    bookmarks.made = corpusData("note.bookmark");
    const std::string text = printed(resolveVerbose);
    EXPECT_TRUE(text.starts_with(
        analysisOf("note.bookmark")
        + "\n\n/data/notes.txt\nvolfs path : /.vol/5/123\n\nThe item is at the stored path. "))
        << text;
    EXPECT_THAT(text, HasSubstr("\nPath: same\n  /Users/demo/note.txt\nName: same\n  note.txt\n"));
    EXPECT_EQ(log.back(), "bookmarkData /data/notes.txt");
    bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    EXPECT_EQ(run(resolveVerbose), ExitStatus::failure);
    EXPECT_EQ(output.text, analysisOf("note.bookmark") + "\n");
}

TEST_F(BookmarkCommandTest, comparesWhatIsStoredWithTheItemFound) {
    bookmarks.made = bookmarkOfComponent("a\n\x1B");
    EXPECT_THAT(
        printed(resolveVerbose),
        HasSubstr("\nPath: differs\n  stored: /Users/demo/note.txt\n  found:  /a\n\x1B\n"));
    output.terminal = true;
    EXPECT_THAT(printed(resolveVerbose), HasSubstr("\n  found:  /a\\n\\x1b\n"));
    bookmarks.made = std::unexpected(platform::posixError(EACCES));
    EXPECT_THAT(
        printed(resolveVerbose),
        testing::AllOf(
            HasSubstr("\nThe facts of the item cannot be read: Permission denied.\n"),
            HasSubstr("\nName: not compared\n  stored: note.txt\nFile numbers: ")));
}

TEST_F(BookmarkCommandTest, saysWhyABookmarkCouldNotBeResolved) {
    const std::string notResolved = "tolvane-cli: Couldn't resolve Bookmark. ";
    bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    EXPECT_EQ(complaint(resolve), notResolved + "No such file or directory\n");
    bookmarks.resolved = platform::ResolvedBookmark{};
    EXPECT_EQ(complaint(resolve), notResolved + "The bookmark names no item.\n");
    bookmarks.resolveTo("/data/caf\xE9");
    fileManager.answer = std::unexpected(platform::posixError(EACCES));
    errors.terminal = true;
    EXPECT_EQ(
        complaint(resolve), notResolved
                                + "The item was found at /data/caf\\xe9, but cannot be accessed: Permission "
                                  "denied.\n");
}

TEST_F(BookmarkCommandTest, keepsAPathToOneLineOnATerminal) {
    bookmarks.resolveTo("/a\n\x1B\\\xE9");
    EXPECT_EQ(printed(resolve), "/a\n\x1B\\\uFFFD\nvolfs path : /.vol/5/123\n");
    output.terminal = true;
    EXPECT_EQ(printed(resolve), "/a\\n\\x1b\\\\\uFFFD\nvolfs path : /.vol/5/123\n");
}

TEST_F(BookmarkCommandTest, saysInJsonHowTheItemWasFound) {
    bookmarks.resolved->match.item = platform::ItemMatch::fileNumbers;
    const std::string text = printed(resolveJson);
    EXPECT_EQ(std::ranges::count(text, '\n'), 1);
    const Json json = Json::parse(text);
    EXPECT_EQ(json["path"], "/data/notes.txt");
    EXPECT_EQ(json["volumePath"], "/.vol/5/123");
    EXPECT_EQ(json["foundBy"], "fileNumbers");
}

// Streams

TEST_F(BookmarkCommandTest, endsWithAMessageWhenOutputFails) {
    bookmarks.made = corpusData("note.bookmark");
    bookmarks.stored = corpusData("note.bookmark");
    files["/here/f"] = corpusText("note.bookmark");
    output.capacity = 3;
    for (const Words& request : std::vector<Words>{
             "bookmark make a",
             makeAlias,
             "bookmark read a",
             {"bookmark", "show", resolve[2]},
             {"bookmark", "show", "--json", resolve[2]},
             resolve,
             resolveVerbose,
             resolveJson,
             "bookmark find --json f",
             "bookmark --help",
             "bookmark show --help"}) {
        SCOPED_TRACE(testing::PrintToString(request));
        EXPECT_EQ(complaint(request), "tolvane-cli: standard output: No space left on device\n");
    }
    EXPECT_THAT(
        complaint("bookmark show AAAA"),
        testing::AllOf(
            HasSubstr("at byte 0."),
            testing::EndsWith("tolvane-cli: standard output: No space left on device\n")));
}

} // namespace
} // namespace tolvane::tests
