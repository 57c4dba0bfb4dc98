// The bookmark verbs of the program itself, on real files.
#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/values/Base64.h"
#include "tests/end_to_end/Corpus.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/BookmarkCorpus.h"
#include "tests/support/OldAliasFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>
#include <vector>
#include <fcntl.h>

namespace tolvane::tests {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;
using Texts = std::vector<std::string>;

constexpr const char* nothing = "nil\n\n\nnil\n";

ProcessOutcome bookmark(Texts arguments, ProcessSetup setup = {}) {
    arguments.insert(arguments.begin(), "bookmark");
    return run(tolvane(std::move(arguments), std::move(setup)));
}

class Bookmark : public testing::Test {
protected:
    /// What "bookmark show" prints with these arguments.
    static std::string shown(Texts arguments, const std::string& input = {}) {
        arguments.insert(arguments.begin(), {"bookmark", "show"});
        return printed(arguments, input);
    }

    TemporaryFolder folder;
};

// Showing

TEST_F(Bookmark, isShownTheSameInEveryFormOfInput) {
    const std::string bytes = corpusText("note.bookmark");
    std::string wrapped = base64Of(bytes);
    for (std::size_t place = 76; place < wrapped.size(); place += 77) {
        wrapped.insert(place, "\n");
    }
    const std::string expected = shown({base64Of(bytes)});
    EXPECT_THAT(
        expected,
        StartsWith("Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkAllPropertiesKey): {\n"
                   "    NSURLBookmarkOriginalRelativePathComponentsArrayKey =     (\n        Users,\n"));
    EXPECT_TRUE(expected.ends_with("creationOptions:\"536870912\"])\n")) << expected;
    EXPECT_EQ(shown({}, wrapped), expected);
    EXPECT_EQ(shown({}, bytes), expected);
    for (const Texts& arguments :
         {Texts{wrapped}, Texts{"--", base64Of(bytes)}, Texts{"--file", corpusPath("note.bookmark")},
          Texts{"--file", folder.file("text", wrapped)}, Texts{"--file", corpusPath("note.alias")},
          Texts{"--file", folder.symlink("link", corpusPath("note.alias"))}}) {
        EXPECT_EQ(shown(arguments), expected) << arguments.back();
    }
}

TEST_F(Bookmark, canComeThroughAFifo) {
    const std::string fifo = folder.fifo("fifo");
    std::thread writer(
        [&fifo] { EXPECT_TRUE(platform::writeAll(openedFile(fifo, O_WRONLY), corpusText("note.alias"))); });
    const std::string text = shown({"--file", fifo});
    writer.join();
    EXPECT_EQ(text, shown({"--file", corpusPath("note.alias")}));
}

TEST_F(Bookmark, ofTheCorpusIsShownOrComplainedOfByItsName) {
    for (const auto& entry : std::filesystem::directory_iterator(corpusPath(""))) {
        const std::string path = entry.path().string();
        SCOPED_TRACE(path);
        if (!entry.path().filename().string().starts_with("bad-")) {
            EXPECT_THAT(shown({"--file", path}), StartsWith("Optional([__C."));
            EXPECT_TRUE(json::accept(shown({"--json", "--file", path})));
            continue;
        }
        const auto outcome = bookmark({"show", "--file", path});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, nothing);
        EXPECT_EQ(linesOf(outcome.err).size(), 1U) << outcome.err;
        EXPECT_THAT(outcome.err, StartsWith("tolvane-cli: " + path + ": "));
        EXPECT_THAT(outcome.err, HasSubstr(": Not a readable bookmark: expected "));
        const auto inJson = bookmark({"show", "--json", "--file", path});
        EXPECT_EQ(inJson.status, 1);
        EXPECT_TRUE(json::parse(inJson.out).contains("error")) << inJson.out;
        EXPECT_EQ(bookmark({"read", path}).status, 1);
    }
}

TEST_F(Bookmark, cannotBeShownFromWhatCannotBeRead) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {folder.path("missing"), "No such file or directory"},
        {folder.path(), "Is a directory"},
        {"/dev/zero", "more than 25165824 bytes are not read"}};
    for (const auto& [path, reason] : cases) {
        expectComplaint(bookmark({"show", "--file", path}), path + ": " + reason);
    }
    expectComplaint(bookmark({"show"}, {.closedDescriptors = {0}}), "standard input: Bad file descriptor");
}

// Reading

TEST_F(Bookmark, isReadFromAnAliasFile) {
    const std::string expected = base64Of(corpusText("note.bookmark")) + "\n";
    EXPECT_EQ(printed({"bookmark", "read", corpusPath("note.alias")}), expected);
    EXPECT_EQ(printed({"bookmark", "read", corpusPath("note.bookmark")}), expected);
    for (const std::string name : {"-x", "caf\xE9", "two\nlines", "-", "--help"}) {
        folder.file(name, corpusText("note.alias"));
        EXPECT_EQ(bookmark({"read", "--", name}, {.folder = folder.path()}).out, expected) << name;
    }
    const std::string text = printed({"bookmark", "read", corpusPath("share.alias")});
    EXPECT_EQ(shown({}, text), shown({"--file", corpusPath("share.alias")}));
}

TEST_F(Bookmark, isReadFromAnAliasFileFromBeforeBookmarks) {
    const std::string path = folder.file("old");
    const platform::Data record = aliasBytes(2, 0, "Disk");
    if (!setExtendedAttribute(path, "user.com.apple.ResourceFork", textOf(forkWith({{0, record}})))) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    const std::string expected = platform::base64EncodedString(platform::bookmarkOfAliasRecord(record));
    EXPECT_EQ(printed({"bookmark", "read", path}), expected + "\n");
    EXPECT_EQ(shown({"--file", path}), shown({expected}));
    const json told = json::parse(shown({"--json", "--file", path}));
    EXPECT_EQ(told["header"]["container"], "bareAlias");
    EXPECT_EQ(told["tables"][0]["items"][0]["label"], "aliasData");
}

TEST_F(Bookmark, isReadWithoutATrace) {
    const std::string path = folder.file("a", corpusText("note.alias"));
    const UntouchedItems items({path});
    printed({"bookmark", "read", path});
    items.expectSameStatus();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1)
        << "nothing is left behind";
}

// Terminals

TEST_F(Bookmark, complaintsCannotSteerATerminal) {
    expectComplaint(
        runOnTerminal(tolvane({"bookmark", "read", folder.path("red\x1b[31m")}), false),
        folder.path("red\\x1b[31m") + ": The file was not found.");
    const auto noBase64 = runOnTerminal(tolvane({"bookmark", "show", "Zm9v\x1b\u202e"}), false);
    EXPECT_TRUE(isHarmless(noBase64.err)) << noBase64.err;
}

} // namespace
} // namespace tolvane::tests
