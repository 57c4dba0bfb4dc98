// Bookmarks that the program makes and resolves itself, while their items are renamed, moved and removed.
#include "tests/end_to_end/Corpus.h"
#include "tests/oracle/BookmarkOracle.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>
#include <vector>
#include <fcntl.h>

namespace tolvane::tests {
namespace {

namespace fs = std::filesystem;

using nlohmann::json;
using testing::AnyOf;

class BookmarkRoundTrip : public testing::Test {
protected:
    void SetUp() override {
        if (!keepsCreationDate(home)) {
            GTEST_SKIP() << home << " is on a file system without creation dates";
        }
    }

    std::string bookmarkOf(const std::string& name) const {
        return printed({"bookmark", "make", folder.path(name)});
    }

    static json resolved(const std::string& text) {
        return json::parse(printed({"bookmark", "resolve", "--json", text}));
    }

    void rename(const std::string& name, const std::string& newName) const {
        fs::rename(folder.path(name), folder.path(newName));
    }

    /// Expects the text form and the JSON form to lead to the item that is at `name` now.
    void expectLeadsTo(
        const std::string& text, const std::string& name, const std::string& foundBy, bool isStale) const {
        const std::string realPath = home + "/" + name;
        EXPECT_EQ(printed({"bookmark", "resolve", text}), linesOfItem(realPath, realPath));
        const json told = resolved(text);
        EXPECT_EQ(told["path"], realPath);
        EXPECT_EQ(told["foundBy"], foundBy) << told;
        EXPECT_EQ(told["isStale"], isStale) << told;
        EXPECT_EQ(told["actualNumber"], statusOf(realPath).st_ino);
    }

    TemporaryFolder folder;
    std::string home = fs::canonical(folder.path()).string();
};

TEST_F(BookmarkRoundTrip, findsARenamedFile) {
    folder.file("may");
    const std::string text = bookmarkOf("may");
    rename("may", "june");
    expectLeadsTo(text, "june", "fileNumbers", true);
    const json told = resolved(text);
    EXPECT_EQ(told["storedNumber"], told["actualNumber"]);
    EXPECT_EQ(told["storedCreationDate"]["seconds"], told["actualCreationDate"]["seconds"]);
    expectLeadsTo(bookmarkOf("june"), "june", "path", false);
}

// The search goes outward to the whole volume, as far as it ever does.
TEST_F(BookmarkRoundTrip, failsForARemovedFile) {
    folder.file("may");
    const std::string text = bookmarkOf("may");
    fs::remove(folder.path("may"));
    const auto outcome = run(tolvane({"bookmark", "resolve", "--json", text}));
    EXPECT_EQ(outcome.status, 1);
    const json told = json::parse(outcome.out);
    EXPECT_EQ(told["error"], "Couldn't resolve Bookmark.");
    const auto reason = told.value("reason", "");
    const std::string nothing = "Nothing is at " + home + "/may, and the item ";
    EXPECT_THAT(
        reason, AnyOf(
                    nothing + "is nowhere else on the volume.",
                    nothing + "was not found in the part of the volume that could be searched."));
    EXPECT_EQ(outcome.err, "tolvane-cli: Couldn't resolve Bookmark. " + reason + "\n");
    expectComplaint(run(tolvane({"bookmark", "resolve", text})), "Couldn't resolve Bookmark. " + reason);
}

TEST_F(BookmarkRoundTrip, ofAnAliasFileHasTheSamePropertiesAndLeadsToTheSameItem) {
    folder.folder("folder");
    const std::string target = folder.file("folder/may", "words");
    const std::string aliasFile = folder.path("may alias");
    const auto output = openedFile(aliasFile, O_WRONLY | O_CREAT | O_EXCL);
    const auto outcome =
        run(tolvane({"bookmark", "make", "--alias", target}, {.outputDescriptor = output.number()}));
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(contentsOfFile(aliasFile), testing::StartsWith("book"));

    const std::string text = printed({"bookmark", "read", aliasFile});
    const auto properties = [](const std::vector<std::string>& bookmark) {
        std::vector<std::string> arguments{"bookmark", "show", "--json"};
        arguments.insert(arguments.end(), bookmark.begin(), bookmark.end());
        return json::parse(printed(arguments)).value("properties", json());
    };
    json expected = properties({bookmarkOf("folder/may")});
    EXPECT_EQ(expected["_NSURLPathKey"], home + "/folder/may");
    expected["NSURLLocalizedNameKey"] = "may"; // Alias files store the displayed name as well.
    EXPECT_EQ(properties({text}), expected);
    EXPECT_EQ(properties({"--file", aliasFile}), expected);

    expectLeadsTo(text, "folder/may", "path", false);
    rename("folder/may", "june");
    EXPECT_EQ(
        printed({"bookmark", "resolve", "--file", aliasFile}), linesOfItem(home + "/june", home + "/june"));
    EXPECT_EQ(json::parse(printed({"bookmark", "resolve", "--json", "--file", aliasFile})), resolved(text));
}

// Resolving changes nothing. Searching reads folders, which their owner can do without a trace.
TEST_F(BookmarkRoundTrip, changesNothing) {
    folder.folder("a");
    folder.folder("a/b");
    folder.folder("z");
    folder.file("a/b/file", "words");
    folder.file("z/other", "more words");
    const std::string text = bookmarkOf("a/b/file");
    const auto expectNothingChanged = [&](const std::string& name, const std::string& foundBy, bool isStale) {
        const UntouchedItems items(
            {folder.path(), folder.path("a"), folder.path("a/b"), folder.path("z"), folder.path("z/other"),
             folder.path(name)});
        expectLeadsTo(text, name, foundBy, isStale);
        items.expectSameStatus();
        items.expectSameContents();
    };
    expectNothingChanged("a/b/file", "path", false);
    rename("a/b/file", "z/moved");
    expectNothingChanged("z/moved", "search", true);
}

} // namespace
} // namespace tolvane::tests
