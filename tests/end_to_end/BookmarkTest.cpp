// The bookmark verbs of the program itself, on real files.
#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/bookmark/format/OldAliasRecord.h"
#include "platform/bookmark/format/SectionComposer.h"
#include "platform/values/Base64.h"
#include "platform/values/ByteCursor.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/OldAliasFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <span>
#include <string>
#include <thread>
#include <vector>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;
using Texts = std::vector<std::string>;

constexpr const char* nothing = "nil\n\n\nnil\n";

std::string corpusPath(const std::string& name) {
    return TOLVANE_SOURCE_DIR "/tests/data/bookmarks/" + name;
}

std::string corpus(const std::string& name) {
    return contentsOfFile(corpusPath(name));
}

std::string base64Of(const std::string& bytes) {
    return platform::base64EncodedString(std::as_bytes(std::span(bytes)));
}

ProcessOutcome bookmark(Texts arguments, const std::string& input = {}) {
    arguments.insert(arguments.begin(), "bookmark");
    auto setup = tolvane(std::move(arguments));
    setup.input = input;
    return run(setup);
}

/// What it prints when all goes well.
std::string printed(const Texts& arguments, const std::string& input = {}) {
    const auto outcome = bookmark(arguments, input);
    EXPECT_EQ(outcome.status, 0) << testing::PrintToString(arguments);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
}

class Bookmark : public testing::Test {
protected:
    TemporaryFolder folder;
};

// Showing

TEST_F(Bookmark, isShownTheSameWhicheverWayItCame) {
    const std::string bytes = corpus("note.bookmark");
    std::string wrapped = base64Of(bytes);
    for (std::size_t place = 76; place < wrapped.size(); place += 77) {
        wrapped.insert(place, "\n");
    }
    const std::string shown = printed({"show", base64Of(bytes)});
    EXPECT_THAT(
        shown,
        StartsWith("Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkAllPropertiesKey): {\n"
                   "    NSURLBookmarkOriginalRelativePathComponentsArrayKey =     (\n        Users,\n"));
    EXPECT_TRUE(shown.ends_with("creationOptions:\"536870912\"])\n")) << shown;
    EXPECT_EQ(printed({"show", wrapped}), shown);
    EXPECT_EQ(printed({"show"}, wrapped), shown);
    EXPECT_EQ(printed({"show"}, bytes), shown);
    EXPECT_EQ(printed({"show", "--file", corpusPath("note.bookmark")}), shown);
    EXPECT_EQ(printed({"show", "--file", folder.file("text", wrapped)}), shown);
    EXPECT_EQ(printed({"show", "--file", corpusPath("note.alias")}), shown);
    EXPECT_EQ(printed({"show", "--file", folder.symlink("link", corpusPath("note.alias"))}), shown);
    EXPECT_EQ(printed({"show", "--", base64Of(bytes)}), shown);
}

TEST_F(Bookmark, canComeThroughAFifo) {
    const std::string fifo = folder.fifo("fifo");
    std::thread writer([&fifo] {
        const auto end = platform::FileDescriptor::owned(open(fifo.c_str(), O_WRONLY | O_CLOEXEC));
        static_cast<void>(platform::writeAll(end, corpus("note.alias")));
    });
    const std::string shown = printed({"show", "--file", fifo});
    writer.join();
    EXPECT_EQ(shown, printed({"show", "--file", corpusPath("note.alias")}));
}

TEST_F(Bookmark, ofTheCorpusIsShownOrComplainedOfByItsName) {
    for (const auto& entry : std::filesystem::directory_iterator(corpusPath(""))) {
        const std::string path = entry.path().string();
        const bool isBad = entry.path().filename().string().starts_with("bad-");
        const auto outcome = bookmark({"show", "--file", path});
        if (!isBad) {
            EXPECT_EQ(outcome.status, 0) << outcome.err;
            EXPECT_THAT(outcome.out, StartsWith("Optional([__C.")) << path;
            EXPECT_TRUE(json::accept(printed({"show", "--json", "--file", path}))) << path;
            continue;
        }
        EXPECT_EQ(outcome.status, 1) << path;
        EXPECT_EQ(linesOf(outcome.err).size(), 1U) << outcome.err;
        EXPECT_THAT(outcome.err, StartsWith("tolvane-cli: " + path + ": "));
        EXPECT_THAT(outcome.err, HasSubstr(": Not a readable bookmark: expected "));
        EXPECT_EQ(outcome.out, nothing) << path;
        const auto inJson = bookmark({"show", "--json", "--file", path});
        EXPECT_EQ(inJson.status, 1);
        EXPECT_TRUE(json::parse(inJson.out).contains("error")) << inJson.out;
        EXPECT_EQ(bookmark({"read", path}).status, 1) << path;
    }
}

TEST_F(Bookmark, thatIsNoneIsComplainedOfWithThePlace) {
    const auto cut = bookmark({"show", "--file", folder.file("cut", corpus("note.alias").substr(0, 600))});
    EXPECT_EQ(cut.status, 1);
    EXPECT_EQ(cut.out, nothing);
    EXPECT_EQ(
        cut.err,
        "tolvane-cli: " + folder.path("cut")
            + ": Not a readable bookmark: expected a length of the data section within the bytes that are "
              "there at byte 24.\n");
    const auto noBase64 = bookmark({"show"}, "Zm9v\nZm-v\n");
    EXPECT_EQ(noBase64.status, 1);
    EXPECT_EQ(noBase64.out, "");
    EXPECT_EQ(
        noBase64.err,
        "tolvane-cli: standard input: Couldn't analyse Bookmark. Expected at line 2, character 3: a "
        "letter, a digit, '+', '/' or the padding '='; there is \"-\".\n");
    for (const Texts& arguments : {Texts{"show", ""}, Texts{"show"}, Texts{"show", "--file", "/dev/null"}}) {
        const auto empty = bookmark(arguments);
        EXPECT_EQ(empty.status, 1);
        EXPECT_EQ(empty.out, nothing);
        EXPECT_THAT(empty.err, HasSubstr("expected the letters \"book\" or \"alis\" at byte 0.\n"));
    }
}

TEST_F(Bookmark, cannotBeShownFromWhatCannotBeRead) {
    EXPECT_EQ(
        bookmark({"show", "--file", folder.path("missing")}).err,
        "tolvane-cli: " + folder.path("missing") + ": No such file or directory\n");
    EXPECT_EQ(
        bookmark({"show", "--file", folder.path()}).err,
        "tolvane-cli: " + folder.path() + ": Is a directory\n");
    const auto endless = bookmark({"show", "--file", "/dev/zero"});
    EXPECT_EQ(endless.status, 1);
    EXPECT_EQ(endless.err, "tolvane-cli: /dev/zero: more than 25165824 bytes are not read\n");
    auto setup = tolvane({"bookmark", "show"});
    setup.closedDescriptors = {0};
    const auto closed = run(setup);
    EXPECT_EQ(closed.status, 1);
    EXPECT_EQ(closed.err, "tolvane-cli: standard input: Bad file descriptor\n");
}

TEST_F(Bookmark, isToldInJsonWithExactValues) {
    const json told = json::parse(printed({"show", "--json", "--file", corpusPath("note.alias")}));
    EXPECT_EQ(told["header"]["container"], "aliasFile");
    EXPECT_EQ(told["header"]["aliasFile"]["written"]["seconds"], 700'000'100.0);
    EXPECT_EQ(told["properties"]["NSURLVolumeTotalCapacityKey"], 494'384'795'648);
    EXPECT_EQ(told["properties"]["NSURLCreationDateKey"]["date"], "2023-03-08T20:26:40.500000000Z");
    EXPECT_EQ(told["tables"][0]["items"].size(), 16U);
}

// Made to exhaust whoever writes it out: one text in every place of one long array.
TEST_F(Bookmark, thatSharesMuchIsToldInJsonAtALengthThatFitsItsOwn) {
    platform::SectionComposer composer;
    const std::uint32_t name = composer.addString("shared");
    const std::uint32_t text = composer.addString("\x01\x01\x01\x01\x01\x01\x01\x01");
    std::vector<std::uint32_t> elements(50'000, text);
    const std::uint32_t array = composer.addArray(elements);
    const platform::Data section = composer.take(composer.addTable(
        platform::table_identifier::target, 0, {{platform::bookmark_key::namedBit | name, array, 0}}));
    platform::Data bytes;
    platform::appendBookmarkHeader(bytes, platform::BookmarkHeader(), section.size());
    platform::appendBytes(bytes, section);
    const std::string path = folder.file("shared", textOf(bytes));
    const std::string told = printed({"show", "--json", "--file", path});
    EXPECT_LT(told.size(), 40 * bytes.size());
    EXPECT_EQ(std::ranges::count(told, '\n'), 1);
    EXPECT_EQ(json::parse(told)["properties"]["shared"].size(), elements.size());
}

// Reading

TEST_F(Bookmark, isReadFromAnAliasFile) {
    const std::string expected = base64Of(corpus("note.bookmark")) + "\n";
    EXPECT_EQ(printed({"read", corpusPath("note.alias")}), expected);
    EXPECT_EQ(printed({"read", corpusPath("note.bookmark")}), expected);
    for (const std::string name : {"-x", "caf\xE9", "two\nlines", "-", "--help"}) {
        folder.file(name, corpus("note.alias"));
        auto setup = tolvane({"bookmark", "read", "--", name});
        setup.folder = folder.path();
        EXPECT_EQ(run(setup).out, expected) << name;
    }
    const std::string text = printed({"read", corpusPath("share.alias")});
    EXPECT_EQ(printed({"show"}, text), printed({"show", "--file", corpusPath("share.alias")}));
}

TEST_F(Bookmark, isReadFromAnAliasFileFromBeforeBookmarks) {
    const std::string path = folder.file("old");
    const platform::Data record = aliasBytes(2, 0, "Disk");
    if (!setExtendedAttribute(path, "user.com.apple.ResourceFork", textOf(forkWith({{0, record}})))) {
        GTEST_SKIP() << "no attributes here: " << std::strerror(errno);
    }
    const std::string expected = platform::base64EncodedString(platform::bookmarkOfAliasRecord(record));
    EXPECT_EQ(printed({"read", path}), expected + "\n");
    EXPECT_EQ(printed({"show", "--file", path}), printed({"show", expected}));
    const json told = json::parse(printed({"show", "--json", "--file", path}));
    EXPECT_EQ(told["header"]["container"], "bareAlias");
    EXPECT_EQ(told["tables"][0]["items"][0]["label"], "aliasData");
}

TEST_F(Bookmark, isNotReadFromItemsThatHoldNone) {
    struct Case {
        std::string path;
        std::string sentence;
    };
    const std::vector<Case> cases{
        {folder.path("missing"), "The file was not found."},
        {folder.path(), "A folder holds no bookmark data."},
        {folder.fifo("fifo"), "A FIFO holds no bookmark data."},
        {folder.socket("socket"), "A socket holds no bookmark data."},
        {folder.symlink("link", corpusPath("note.alias")),
         "A symbolic link holds no bookmark data; it leads to “" + corpusPath("note.alias")
             + "” and is not followed."},
        {folder.file("text", "plain"), "The file holds no bookmark data."},
        {"/dev/null", "A device holds no bookmark data."}};
    for (const auto& [path, sentence] : cases) {
        const auto outcome = bookmark({"read", path});
        EXPECT_EQ(outcome.status, 1) << path;
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "tolvane-cli: " + path + ": " + sentence + "\n");
    }
}

TEST_F(Bookmark, ofAnUnreadableFileIsRefused) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can run the program as another user";
    }
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    const std::string path = folder.file("a", corpus("note.alias"));
    ASSERT_EQ(chmod(path.c_str(), 0600), 0);
    auto setup = tolvane({"bookmark", "read", path});
    setup.user = 65'534;
    const auto outcome = run(setup);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tolvane-cli: " + path + ": Permission to read the file was denied.\n");
}

TEST_F(Bookmark, isReadWithoutATrace) {
    const std::string path = folder.file("a", corpus("note.alias"));
    const std::array<timespec, 2> dates{timespec{1'000, 0}, timespec{2'000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), dates.data(), 0), 0);
    printed({"read", path});
    struct stat status{};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_atim.tv_sec, 1'000);
    EXPECT_EQ(status.st_mtim.tv_sec, 2'000);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1)
        << "nothing is left behind";
}

// Terminals

TEST_F(Bookmark, cannotDriveATerminal) {
    platform::SectionComposer composer;
    const std::vector<std::uint32_t> components{composer.addString("red\x1b[31m\u009b\u202e\r\x7f")};
    const std::uint32_t path = composer.addArray(components);
    const platform::Data section = composer.take(composer.addTable(
        platform::table_identifier::target, 0, {{platform::bookmark_key::pathComponents, path, 0}}));
    platform::Data bytes;
    platform::appendBookmarkHeader(bytes, platform::BookmarkHeader(), section.size());
    platform::appendBytes(bytes, section);
    const std::string text = platform::base64EncodedString(bytes);
    for (const Texts& arguments :
         {Texts{"bookmark", "show", text}, Texts{"bookmark", "show", "--json", text}}) {
        const auto outcome = runOnTerminal(tolvane(arguments), true);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_TRUE(isHarmless(outcome.out)) << outcome.out;
        EXPECT_FALSE(outcome.out.contains("\u202e"));
        EXPECT_FALSE(outcome.out.contains("\u009b"));
    }
    const auto complaint = runOnTerminal(tolvane({"bookmark", "read", folder.path("red\x1b[31m")}), false);
    EXPECT_EQ(complaint.err, "tolvane-cli: " + folder.path("red\\x1b[31m") + ": The file was not found.\n");
    const auto noBase64 = runOnTerminal(tolvane({"bookmark", "show", "Zm9v\x1b\u202e"}), false);
    EXPECT_TRUE(isHarmless(noBase64.err)) << noBase64.err;
}

TEST_F(Bookmark, isNoAliasFileForATerminal) {
    const auto outcome = runOnTerminal(tolvane({"bookmark", "make", "--alias", folder.path()}), true);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, HasSubstr("an alias file cannot be printed to a terminal"));
}

// Those that Macs made are not ours to hand out, so this runs only where a folder with them lies beside the
// checkout.
TEST_F(Bookmark, thatAMacMadeIsShownAndRead) {
    const auto samples =
        std::filesystem::path(TOLVANE_SOURCE_DIR "/../shared/data/bookmarks").lexically_normal();
    if (!std::filesystem::is_directory(samples)) {
        GTEST_SKIP() << "there is no folder of samples at " << samples;
    }
    const std::string alias = (samples / "25-alias-file-2025.alias").string();
    const std::string shown = printed({"show", "--file", alias});
    EXPECT_THAT(shown, HasSubstr("    \"_NSURLPathKey\" = \"/Applications\";\n"));
    EXPECT_EQ(printed({"show"}, printed({"read", alias})), shown);
    const auto loop = bookmark({"show", "--file", (samples / "90-bad-loop.bookmark").string()});
    EXPECT_EQ(loop.status, 1);
    EXPECT_EQ(loop.out, nothing);
    EXPECT_THAT(
        loop.err,
        HasSubstr("expected an offset that does not lead back to the record holding it at byte 116"));
}

} // namespace
} // namespace tolvane::tests
