// Bookmarks that the program makes and resolves itself, while their items are renamed, moved and removed.
#include "platform/linux/files/FileDescriptor.h"
#include "tests/oracle/Tolvane.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::tests {
namespace {

namespace fs = std::filesystem;

using nlohmann::json;
using testing::AnyOf;
using testing::StartsWith;
using Texts = std::vector<std::string>;

ProcessOutcome bookmark(Texts arguments) {
    arguments.insert(arguments.begin(), "bookmark");
    return run(tolvane(std::move(arguments)));
}

/// What it prints when all goes well, without the final line feed.
std::string printed(const Texts& arguments) {
    auto outcome = bookmark(arguments);
    EXPECT_EQ(outcome.status, 0) << testing::PrintToString(arguments);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, testing::EndsWith("\n"));
    return outcome.out.substr(0, outcome.out.find_last_not_of('\n') + 1);
}

struct stat statusOf(const std::string& path) {
    struct stat status{};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path << ": " << std::strerror(errno);
    return status;
}

/// The two lines that resolving prints, told without the program.
std::string expectedLines(const std::string& realPath) {
    const auto status = statusOf(realPath);
    return realPath + "\nvolfs path : /.vol/" + std::to_string(status.st_dev) + "/"
           + std::to_string(status.st_ino);
}

class BookmarkRoundTrip : public testing::Test {
protected:
    void SetUp() override {
        struct statx status{};
        if (statx(AT_FDCWD, home.c_str(), 0, STATX_BTIME, &status) != 0
            || (status.stx_mask & STATX_BTIME) == 0) {
            GTEST_SKIP() << home << " keeps no creation dates, without which no item is found by its number";
        }
    }

    /// Expects the text form and the JSON form to lead to the item that is at `name` today.
    void expectLeadsTo(
        const std::string& text, const std::string& name, const std::string& foundBy, bool isStale) const {
        const std::string realPath = home + "/" + name;
        EXPECT_EQ(printed({"resolve", text}), expectedLines(realPath));
        const json told = json::parse(printed({"resolve", "--json", text}));
        EXPECT_EQ(told["path"], realPath);
        EXPECT_EQ(told["foundBy"], foundBy) << told;
        EXPECT_EQ(told["isStale"], isStale) << told;
        EXPECT_EQ(told["actualNumber"], statusOf(realPath).st_ino);
    }

    TemporaryFolder folder;
    std::string home = fs::canonical(folder.path()).string();
};

TEST_F(BookmarkRoundTrip, leadsBackToItemsOfEveryKind) {
    const std::string withBlanks = " two  words\ttab";
    folder.file("file", "words");
    folder.file(withBlanks);
    folder.folder("folder");
    folder.symlink("dangling", "nowhere");
    folder.fifo("fifo");
    for (const std::string& name :
         {std::string("file"), withBlanks, std::string("folder"), std::string("dangling"),
          std::string("fifo")}) {
        expectLeadsTo(printed({"make", folder.path(name)}), name, "path", false);
    }
}

TEST_F(BookmarkRoundTrip, leadsToTheRealPathOfANameThroughALink) {
    folder.folder("real");
    folder.file("real/file");
    folder.symlink("link", "real");
    auto setup = tolvane({"bookmark", "make", "link/../link/file"});
    setup.folder = folder.path();
    const std::string text = run(setup).out;
    EXPECT_EQ(text, printed({"make", folder.path("real/file")}) + "\n");
    expectLeadsTo(text, "real/file", "path", false);
}

TEST_F(BookmarkRoundTrip, findsARenamedFile) {
    const std::string text = printed({"make", folder.file("may")});
    fs::rename(folder.path("may"), folder.path("june"));
    expectLeadsTo(text, "june", "fileNumbers", true);
    const json told = json::parse(printed({"resolve", "--json", text}));
    EXPECT_EQ(told["storedNumber"], told["actualNumber"]);
    EXPECT_EQ(told["storedCreationDate"]["seconds"], told["actualCreationDate"]["seconds"]);
    expectLeadsTo(printed({"make", folder.path("june")}), "june", "path", false);
}

TEST_F(BookmarkRoundTrip, findsAFileBelowRenamedFolders) {
    folder.folder("year");
    folder.folder("year/month");
    const std::string text = printed({"make", folder.file("year/month/day")});
    fs::rename(folder.path("year"), folder.path("2026"));
    expectLeadsTo(text, "2026/month/day", "fileNumbers", true);
    fs::rename(folder.path("2026/month"), folder.path("2026/may"));
    fs::rename(folder.path("2026/may/day"), folder.path("2026/may/1"));
    expectLeadsTo(text, "2026/may/1", "fileNumbers", true);
}

TEST_F(BookmarkRoundTrip, findsAFileMovedNearby) {
    for (const char* const name : {"a", "a/b", "z", "z/deep"}) {
        folder.folder(name);
    }
    const std::string text = printed({"make", folder.file("a/b/file")});
    fs::rename(folder.path("a/b/file"), folder.path("z/deep/other name"));
    expectLeadsTo(text, "z/deep/other name", "search", true);
    fs::rename(folder.path("z/deep"), folder.path("a/b/deep"));
    expectLeadsTo(text, "a/b/deep/other name", "search", true);
}

TEST_F(BookmarkRoundTrip, leadsToANewFileOfTheOldName) {
    const std::string text = printed({"make", folder.file("may")});
    fs::rename(folder.path("may"), folder.path("june"));
    folder.file("may", "another one");
    expectLeadsTo(text, "may", "path", true);
    const json told = json::parse(printed({"resolve", "--json", text}));
    EXPECT_EQ(told["storedNumber"], statusOf(folder.path("june")).st_ino);
    fs::remove(folder.path("may"));
    expectLeadsTo(text, "june", "fileNumbers", true);
}

// The search goes outward to the whole volume, as far as it ever does.
TEST_F(BookmarkRoundTrip, failsForARemovedFile) {
    const std::string text = printed({"make", folder.file("may")});
    fs::remove(folder.path("may"));
    const auto plain = bookmark({"resolve", text});
    EXPECT_EQ(plain.status, 1);
    EXPECT_EQ(plain.out, "");
    const auto outcome = bookmark({"resolve", "--json", text});
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
    EXPECT_EQ(plain.err, outcome.err);
}

// Alias files

TEST_F(BookmarkRoundTrip, ofAnAliasFileTellsTheSameAndLeadsToTheSameItem) {
    folder.folder("folder");
    const std::string target = folder.file("folder/may", "words");
    const std::string aliasFile = folder.path("may alias");
    const auto output = platform::FileDescriptor::owned(
        open(aliasFile.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
    auto setup = tolvane({"bookmark", "make", "--alias", target});
    setup.outputDescriptor = output.number();
    const auto outcome = run(setup);
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(contentsOfFile(aliasFile), StartsWith("book"));

    const std::string text = printed({"read", aliasFile});
    const auto propertiesShown = [](const Texts& arguments) {
        return json::parse(printed(arguments)).value("properties", json());
    };
    json expected = propertiesShown({"show", "--json", printed({"make", target})});
    EXPECT_EQ(expected["_NSURLPathKey"], home + "/folder/may");
    expected["NSURLLocalizedNameKey"] = "may"; // Alias files tell the shown name as well.
    EXPECT_EQ(propertiesShown({"show", "--json", text}), expected);
    EXPECT_EQ(propertiesShown({"show", "--json", "--file", aliasFile}), expected);

    expectLeadsTo(text, "folder/may", "path", false);
    EXPECT_EQ(printed({"resolve", "--file", aliasFile}), expectedLines(home + "/folder/may"));
    fs::rename(target, folder.path("june"));
    EXPECT_EQ(printed({"resolve", "--file", aliasFile}), expectedLines(home + "/june"));
    EXPECT_EQ(
        json::parse(printed({"resolve", "--json", "--file", aliasFile})),
        json::parse(printed({"resolve", "--json", text})));
}

// Nothing is touched

/// Dates of an item that lies still. An access date before the modification date moves with the next reading.
struct Dates {
    std::int64_t accessed = 0;
    std::int64_t accessedNanoseconds = 0;
    std::int64_t modified = 0;
    std::int64_t changed = 0;
    std::int64_t changedNanoseconds = 0;

    bool operator==(const Dates&) const = default;
};

Dates datesOf(const std::string& path) {
    const auto status = statusOf(path);
    return {
        status.st_atim.tv_sec, status.st_atim.tv_nsec, status.st_mtim.tv_sec, status.st_ctim.tv_sec,
        status.st_ctim.tv_nsec};
}

class BookmarkResolution : public BookmarkRoundTrip {
protected:
    void makeTree() {
        paths = {folder.path(), folder.folder("a"), folder.folder("a/b"), folder.folder("z")};
        paths.push_back(folder.file("a/b/file", "words"));
        paths.push_back(folder.file("z/other", "more words"));
    }

    void setOldDates() {
        constexpr std::array<timespec, 2> accessedBeforeModified{timespec{1'000'000, 0}, {2'000'000, 0}};
        for (const std::string& path : paths) {
            ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), accessedBeforeModified.data(), 0), 0) << path;
        }
        for (const std::string& path : paths) {
            before[path] = datesOf(path);
        }
    }

    void expectOldDates() const {
        for (const auto& [path, dates] : before) {
            EXPECT_TRUE(datesOf(path) == dates) << path << " was accessed at " << datesOf(path).accessed;
        }
    }

    Texts paths;
    std::map<std::string, Dates> before;
};

TEST_F(BookmarkResolution, changesNothingWhereTheItemIsWhereItWas) {
    makeTree();
    const std::string text = printed({"make", folder.path("a/b/file")});
    setOldDates();
    expectLeadsTo(text, "a/b/file", "path", false);
    expectOldDates();
    EXPECT_EQ(contentsOfFile(folder.path("a/b/file")), "words");
}

// Folders have to be read for it, which their owner can ask to leave no trace.
TEST_F(BookmarkResolution, changesNothingWhereItHasToSearch) {
    makeTree();
    const std::string text = printed({"make", folder.path("a/b/file")});
    fs::rename(folder.path("a/b/file"), folder.path("z/moved"));
    paths[4] = folder.path("z/moved");
    setOldDates();
    expectLeadsTo(text, "z/moved", "search", true);
    expectOldDates();
    EXPECT_EQ(contentsOfFile(folder.path("z/moved")), "words");
    EXPECT_EQ(contentsOfFile(folder.path("z/other")), "more words");
}

} // namespace
} // namespace tolvane::tests
