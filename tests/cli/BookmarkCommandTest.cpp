#include "cli/BookmarkCommand.h"

#include "platform/bookmark/description/BookmarkProperties.h"
#include "platform/bookmark/format/BookmarkContents.h"
#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/format/SectionComposer.h"
#include "platform/values/Base64.h"
#include "platform/values/ByteCursor.h"
#include "resolver/AnalyseBookmark.h"
#include "tests/cli/CliProgram.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

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
using testing::StartsWith;
using Json = nlohmann::ordered_json;

class BookmarkCommandTest : public CliProgram {
protected:
    BookmarkCommandTest() {
        bookmarks.resolved = platform::ResolvedBookmark{URL::fileURLWithPath("/data/notes.txt"), false};
        fileManager.answer = Dictionary{
            {"NSFileSystemNumber", std::uint64_t{5}}, {"NSFileSystemFileNumber", std::uint64_t{123}}};
    }

    static platform::Data corpus(const std::string& name) {
        const std::string contents = contentsOfFile(TOLVANE_SOURCE_DIR "/tests/data/bookmarks/" + name);
        const auto bytes = std::as_bytes(std::span(contents));
        return {bytes.begin(), bytes.end()};
    }

    static std::string base64(const std::string& name) { return platform::base64EncodedString(corpus(name)); }

    /// A sound bookmark whose path has this one component.
    static platform::Data bookmarkOfComponent(std::string_view component) {
        platform::SectionComposer composer;
        const std::vector<std::uint32_t> components{composer.addString(component)};
        const std::uint32_t path = composer.addArray(components);
        const std::uint32_t table = composer.addTable(
            platform::table_identifier::target, 0, {{platform::bookmark_key::pathComponents, path, 0}});
        const platform::Data section = composer.take(table);
        platform::Data bytes;
        platform::appendBookmarkHeader(bytes, platform::BookmarkHeader(), section.size());
        platform::appendBytes(bytes, section);
        return bytes;
    }

    /// The analysis as the window shows it.
    static std::string analysisOf(const std::string& name) {
        return resolver::bookmarkAnalysis(platform::readStoredProperties(corpus(name)));
    }
};

// Making

TEST_F(BookmarkCommandTest, makesABookmarkOfAFileInOneLine) {
    bookmarks.made = platform::Data(300, std::byte{0xFF});
    EXPECT_EQ(run({"bookmark", "make", "a"}), ExitStatus::success);
    EXPECT_EQ(output.text, std::string(400, '/') + "\n");
    EXPECT_EQ(errors.text, "");
    EXPECT_THAT(log, ElementsAre("bookmarkData /here/a"));
}

TEST_F(BookmarkCommandTest, saysWhyNoBookmarkCouldBeMade) {
    bookmarks.made = std::unexpected(platform::posixError(EIO));
    EXPECT_EQ(run({"bookmark", "make", "a\x1B"}), ExitStatus::failure);
    EXPECT_EQ(output.text, "");
    EXPECT_EQ(errors.text, "tolvane-cli: a\x1B: Input/output error\n");
    errors.text.clear();
    errors.terminal = true;
    EXPECT_EQ(run({"bookmark", "make", "a\x1B"}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: a\\x1b: Input/output error\n");
    errors.text.clear();
    EXPECT_EQ(run({"bookmark", "make", ""}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: '': No such file or directory\n");
}

TEST_F(BookmarkCommandTest, makesAnAliasFileOfTheNewBookmark) {
    bookmarks.made = corpus("note.bookmark");
    session.time = 700'000'100;
    EXPECT_EQ(run({"bookmark", "make", "--alias", "a"}), ExitStatus::success);
    const auto aliasFile = platform::readBookmark(std::as_bytes(std::span(output.text)));
    ASSERT_TRUE(aliasFile);
    EXPECT_TRUE(aliasFile->header.isAliasFile());
    EXPECT_EQ(aliasFile->header.writtenDate(), platform::Date(700'000'100));
    auto expected =
        platform::contentsForAliasFile(platform::bookmarkContents(*platform::readBookmark(*bookmarks.made)));
    EXPECT_EQ(platform::bookmarkContents(*aliasFile), expected);
    EXPECT_EQ(expected.displayName, "note.txt");
}

TEST_F(BookmarkCommandTest, sendsNoAliasFileToATerminal) {
    bookmarks.made = corpus("note.bookmark");
    output.terminal = true;
    EXPECT_EQ(run({"bookmark", "make", "--alias", "a"}), ExitStatus::wrongUsage);
    EXPECT_EQ(output.text, "");
    EXPECT_EQ(
        errors.text, "tolvane-cli: bookmark make: an alias file cannot be printed to a terminal; send it to "
                     "a file or a pipe\n");
    EXPECT_TRUE(log.empty()) << "nothing is made";
    EXPECT_EQ(run({"bookmark", "make", "a"}), ExitStatus::success) << "base-64 is for terminals too";
}

TEST_F(BookmarkCommandTest, saysWhyNoAliasFileCouldBeMade) {
    bookmarks.made = corpus("bad-magic.bookmark");
    EXPECT_EQ(run({"bookmark", "make", "--alias", "a"}), ExitStatus::failure);
    EXPECT_THAT(
        errors.text,
        StartsWith("tolvane-cli: a: No alias file can be made of its bookmark: expected the letters "));
    errors.text.clear();
    bookmarks.made = bookmarkOfComponent("a/b");
    EXPECT_EQ(run({"bookmark", "make", "--alias", "a"}), ExitStatus::failure);
    EXPECT_EQ(
        errors.text, "tolvane-cli: a: No alias file can be made of its bookmark: a component of the path "
                     "names no item.\n");
    errors.text.clear();
    bookmarks.made = std::unexpected(platform::posixError(EACCES));
    EXPECT_EQ(run({"bookmark", "make", "--alias", "a"}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: a: Permission denied\n");
}

// Reading

TEST_F(BookmarkCommandTest, readsTheBookmarkThatAFileHolds) {
    bookmarks.stored = bytesOf("stored bookmark");
    EXPECT_EQ(run({"bookmark", "read", "/data/caf\xE9"}), ExitStatus::success);
    EXPECT_EQ(output.text, "c3RvcmVkIGJvb2ttYXJr\n");
    EXPECT_THAT(log, ElementsAre("bookmarkDataWithContents /data/caf\xE9"));
}

TEST_F(BookmarkCommandTest, saysWhyAFileHoldsNone) {
    EXPECT_EQ(run({"bookmark", "read", "a\nb"}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: a\\nb: Input/output error\n");
    EXPECT_EQ(output.text, "");
    errors.text.clear();
    folder = std::unexpected(platform::posixError(ENOENT));
    EXPECT_EQ(run({"bookmark", "read", "a"}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: a: No such file or directory\n");
}

// Showing

TEST_F(BookmarkCommandTest, showsWhatTheWindowShowsAndOneLineFeed) {
    EXPECT_EQ(run({"bookmark", "show", base64("share.bookmark")}), ExitStatus::success);
    EXPECT_EQ(output.text, analysisOf("share.bookmark") + "\n");
    EXPECT_THAT(output.text, HasSubstr("NSURLVolumeNameKey = Share;\n"));
    EXPECT_EQ(errors.text, "");
    EXPECT_TRUE(log.empty()) << "no file is looked at";
}

TEST_F(BookmarkCommandTest, showsNilForWhatIsNoBookmarkAndSaysWhyElsewhere) {
    EXPECT_EQ(run({"bookmark", "show", "AAAA"}), ExitStatus::failure);
    EXPECT_EQ(output.text, "nil\n\n\nnil\n");
    EXPECT_EQ(
        errors.text,
        "tolvane-cli: Not a readable bookmark: expected the letters \"book\" or \"alis\" at byte 0.\n");
    for (const std::string& text : {std::string(), base64("bad-record-past-end.bookmark")}) {
        output.text.clear();
        errors.text.clear();
        EXPECT_EQ(run({"bookmark", "show", text}), ExitStatus::failure);
        EXPECT_EQ(output.text, "nil\n\n\nnil\n");
        EXPECT_THAT(errors.text, HasSubstr("Not a readable bookmark: expected "));
    }
}

TEST_F(BookmarkCommandTest, saysWhatIsNoBase64AndWhere) {
    EXPECT_EQ(run({"bookmark", "show", "Couldn't get Alias."}), ExitStatus::failure);
    EXPECT_EQ(output.text, "");
    EXPECT_EQ(
        errors.text,
        "tolvane-cli: Couldn't analyse Bookmark. Expected at character 7: a letter, a digit, '+', '/' or "
        "the padding '='; there is \"'\".\n");
    errors.text.clear();
    EXPECT_EQ(run({"bookmark", "resolve"}, "AAAA\nAA\r\n"), ExitStatus::failure);
    EXPECT_EQ(
        errors.text,
        "tolvane-cli: standard input: Couldn't resolve Bookmark. Expected at line 2, character 3: a "
        "letter, a digit, '+', '/' or the padding '='; there is U+000D.\n");
    EXPECT_TRUE(log.empty());
}

TEST_F(BookmarkCommandTest, saysWhyItsInputCannotBeRead) {
    EXPECT_EQ(run({"bookmark", "resolve", "--file="}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: '': No such file or directory\n");
    EXPECT_EQ(output.text, "");
}

TEST_F(BookmarkCommandTest, escapesWhatATerminalWouldActOn) {
    output.terminal = true;
    EXPECT_EQ(run({"bookmark", "show", base64("share.bookmark")}), ExitStatus::success);
    EXPECT_EQ(output.text, analysisOf("share.bookmark") + "\n") << "there is nothing to escape";
    output.text.clear();
    const std::string steering = platform::base64EncodedString(bookmarkOfComponent("a\u202E\x1B\\b"));
    EXPECT_EQ(run({"bookmark", "show", steering}), ExitStatus::success);
    EXPECT_THAT(output.text, HasSubstr(R"x(pathComponents:"( \"a\u{202e}\U001b\\\\b\" )")x"));
    output.text.clear();
    EXPECT_EQ(run({"bookmark", "show", "--json", base64("share.bookmark")}), ExitStatus::success);
    EXPECT_TRUE(
        std::ranges::all_of(output.text, [](char c) { return c == '\n' || (c >= 0x20 && c < 0x7F); }));
}

TEST_F(BookmarkCommandTest, showsOneJsonObjectOnOneLine) {
    EXPECT_EQ(run({"bookmark", "show", "--json", base64("note.bookmark")}), ExitStatus::success);
    EXPECT_EQ(std::ranges::count(output.text, '\n'), 1);
    EXPECT_TRUE(output.text.ends_with("}\n"));
    EXPECT_EQ(Json::parse(output.text)["properties"]["NSURLNameKey"], "note.txt");
}

TEST_F(BookmarkCommandTest, tellsInJsonWhatFailed) {
    EXPECT_EQ(run({"bookmark", "show", "--json", "AAAA"}), ExitStatus::failure);
    EXPECT_EQ(Json::parse(output.text), Json::parse(R"({"error": "Not a readable bookmark:",
        "reason": "expected the letters \"book\" or \"alis\" at byte 0."})"));
    EXPECT_THAT(errors.text, HasSubstr("at byte 0."));
    output.text.clear();
    EXPECT_EQ(run({"bookmark", "show", "--json", "A"}), ExitStatus::failure);
    EXPECT_EQ(Json::parse(output.text)["error"], "Couldn't analyse Bookmark.");
    output.text.clear();
    EXPECT_EQ(run({"bookmark", "show", "--json", "--file", "nowhere"}), ExitStatus::failure);
    EXPECT_EQ(Json::parse(output.text)["reason"], "No such file or directory.");
    output.text.clear();
    EXPECT_EQ(run({"bookmark", "resolve", "--json", "A"}), ExitStatus::failure);
    EXPECT_EQ(Json::parse(output.text)["error"], "Couldn't resolve Bookmark.");
}

// Resolving

TEST_F(BookmarkCommandTest, printsThePathThatTheWindowShows) {
    EXPECT_EQ(run({"bookmark", "resolve", base64("note.bookmark")}), ExitStatus::success);
    EXPECT_EQ(output.text, "/data/notes.txt\nvolfs path : /.vol/5/123\n");
    EXPECT_EQ(errors.text, "");
    EXPECT_EQ(bookmarks.resolvedFrom, corpus("note.bookmark"));
    EXPECT_THAT(log, ElementsAre("resolve", "attributesOfItemAtPath /data/notes.txt"));
}

TEST_F(BookmarkCommandTest, resolvesAnAliasFileInBareForm) {
    const platform::Data aliasFile = corpus("note.alias");
    files["f"] = std::string(reinterpret_cast<const char*>(aliasFile.data()), aliasFile.size());
    EXPECT_EQ(run({"bookmark", "resolve", "--file", "f"}), ExitStatus::success);
    EXPECT_EQ(bookmarks.resolvedFrom, corpus("note.bookmark"));
}

TEST_F(BookmarkCommandTest, printsTheAnalysisFirstWhenAskedTo) {
    EXPECT_EQ(run({"bookmark", "resolve", "--verbose", base64("note.bookmark")}), ExitStatus::success);
    EXPECT_EQ(output.text, analysisOf("note.bookmark") + "\n\n/data/notes.txt\nvolfs path : /.vol/5/123\n");
}

TEST_F(BookmarkCommandTest, saysWhyABookmarkCouldNotBeResolved) {
    bookmarks.resolved = std::unexpected(platform::posixError(ENOENT));
    EXPECT_EQ(run({"bookmark", "resolve", base64("note.bookmark")}), ExitStatus::failure);
    EXPECT_EQ(output.text, "");
    EXPECT_EQ(errors.text, "tolvane-cli: Couldn't resolve Bookmark. No such file or directory\n");
    errors.text.clear();
    EXPECT_EQ(run({"bookmark", "resolve", "--verbose", base64("note.bookmark")}), ExitStatus::failure);
    EXPECT_EQ(output.text, analysisOf("note.bookmark") + "\n");
    output.text.clear();
    EXPECT_EQ(run({"bookmark", "resolve", "--json", base64("note.bookmark")}), ExitStatus::failure);
    EXPECT_EQ(
        Json::parse(output.text),
        Json::parse(R"({"error": "Couldn't resolve Bookmark.", "reason": "No such file or directory"})"));
}

TEST_F(BookmarkCommandTest, saysWhenThereIsNoItemOrItCannotBeLookedAt) {
    bookmarks.resolved = platform::ResolvedBookmark{};
    EXPECT_EQ(run({"bookmark", "resolve", base64("note.bookmark")}), ExitStatus::failure);
    EXPECT_EQ(errors.text, "tolvane-cli: Couldn't resolve Bookmark. The bookmark names no item.\n");
    errors.text.clear();
    bookmarks.resolved = platform::ResolvedBookmark{URL::fileURLWithPath("/data/caf\xE9"), false};
    fileManager.answer = std::unexpected(platform::posixError(EACCES));
    errors.terminal = true;
    EXPECT_EQ(run({"bookmark", "resolve", base64("note.bookmark")}), ExitStatus::failure);
    EXPECT_EQ(
        errors.text,
        "tolvane-cli: Couldn't resolve Bookmark. The item was found at /data/caf\\xe9, but cannot be "
        "accessed: Permission denied.\n");
    EXPECT_EQ(output.text, "");
}

TEST_F(BookmarkCommandTest, keepsAPathToOneLineOnATerminal) {
    bookmarks.resolved = platform::ResolvedBookmark{URL::fileURLWithPath("/a\n\x1B\\\xE9"), false};
    EXPECT_EQ(run({"bookmark", "resolve", base64("note.bookmark")}), ExitStatus::success);
    EXPECT_EQ(output.text, "/a\n\x1B\\\uFFFD\nvolfs path : /.vol/5/123\n");
    output.text.clear();
    output.terminal = true;
    EXPECT_EQ(run({"bookmark", "resolve", base64("note.bookmark")}), ExitStatus::success);
    EXPECT_EQ(output.text, "/a\\n\\x1b\\\\\uFFFD\nvolfs path : /.vol/5/123\n");
}

TEST_F(BookmarkCommandTest, printsThePathAloneWhereThereIsNoVolumePath) {
    fileManager.answer = Dictionary{};
    EXPECT_EQ(run({"bookmark", "resolve", base64("note.bookmark")}), ExitStatus::success);
    EXPECT_EQ(output.text, "/data/notes.txt\n");
    output.text.clear();
    EXPECT_EQ(run({"bookmark", "resolve", "--json", base64("note.bookmark")}), ExitStatus::success);
    EXPECT_TRUE(Json::parse(output.text)["volumePath"].is_null());
}

TEST_F(BookmarkCommandTest, tellsInJsonHowTheItemWasFound) {
    bookmarks.resolved->isStale = true;
    bookmarks.resolved->match.item = platform::ItemMatch::fileNumbers;
    bookmarks.resolved->match.storedNumber = 412'399;
    EXPECT_EQ(run({"bookmark", "resolve", "--json", base64("note.bookmark")}), ExitStatus::success);
    EXPECT_EQ(std::ranges::count(output.text, '\n'), 1);
    const Json json = Json::parse(output.text);
    EXPECT_EQ(json["path"], "/data/notes.txt");
    EXPECT_EQ(json["volumePath"], "/.vol/5/123");
    EXPECT_EQ(json["foundBy"], "fileNumbers");
    EXPECT_EQ(json["storedNumber"], 412'399);
    EXPECT_EQ(json["isStale"], true);
}

// Streams

TEST_F(BookmarkCommandTest, endsWithAMessageWhenOutputFails) {
    bookmarks.made = corpus("note.bookmark");
    bookmarks.stored = corpus("note.bookmark");
    const std::string text = base64("note.bookmark");
    const std::vector<std::vector<std::string>> requests{
        {"bookmark", "make", "a"},
        {"bookmark", "make", "--alias", "a"},
        {"bookmark", "read", "a"},
        {"bookmark", "show", text},
        {"bookmark", "show", "--json", text},
        {"bookmark", "resolve", text},
        {"bookmark", "resolve", "--verbose", text},
        {"bookmark", "resolve", "--json", text},
        {"bookmark", "--help"},
        {"bookmark", "show", "--help"}};
    for (const auto& request : requests) {
        output.text.clear();
        errors.text.clear();
        output.capacity = 3;
        EXPECT_EQ(run(request), ExitStatus::failure) << request[1];
        EXPECT_EQ(errors.text, "tolvane-cli: standard output: No space left on device\n") << request[1];
        EXPECT_EQ(output.text, "");
    }
}

TEST_F(BookmarkCommandTest, tellsBothWhatFailedAndThatNobodyCouldReadIt) {
    output.capacity = 3;
    EXPECT_EQ(run({"bookmark", "show", "AAAA"}), ExitStatus::failure);
    EXPECT_THAT(errors.text, HasSubstr("at byte 0."));
    EXPECT_THAT(errors.text, testing::EndsWith("tolvane-cli: standard output: No space left on device\n"));
}

} // namespace
} // namespace tolvane::tests
