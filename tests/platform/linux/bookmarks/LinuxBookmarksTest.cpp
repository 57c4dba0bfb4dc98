#include "platform/linux/bookmarks/LinuxBookmarks.h"

#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/values/Error.h"
#include "tests/contracts/SystemUnderTest.h"
#include "tests/support/Mounting.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>
#include <unistd.h>

namespace tolvane::platform {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

/// The real path, but for a final link.
std::string realPath(const fs::path& path) {
    return (fs::canonical(path.parent_path()) / path.filename()).string();
}

class LinuxBookmarksTest : public tests::contracts::ContractTest {
protected:
    std::int64_t failure(const Data& bookmark) const {
        const auto found = bookmarks.URLByResolvingBookmarkData(bookmark);
        return found ? 0 : found.error().code;
    }

    const Bookmarks& bookmarks = *system.bookmarks;
};

TEST_F(LinuxBookmarksTest, findsItemsOfEveryKindWhereTheyWereAndWhatItHasJustMadeAlike) {
    const std::string file = folder.file("a file");
    const std::string link = folder.symlink("link", "a file");
    // Some twice, since the second time their folder is known.
    for (const std::string& path :
         {file, link, folder.folder("folder"), folder.symlink("dangling", "nowhere"), folder.fifo("fifo"),
          folder.socket("socket"), "/"s, "/dev/null"s, "/proc/version"s, "/dev/shm"s, file, link}) {
        const Data bookmark = bookmarkOf(path);
        EXPECT_EQ(resolved(bookmark), realPath(path));
        const auto read = bookmarks.URLByResolvingBookmarkData(bookmark);
        ASSERT_TRUE(read) << path;
        EXPECT_FALSE(read->isStale) << path;
        const auto made = bookmarks.resolvedBookmarkData(urlOf(path));
        ASSERT_TRUE(made && made->resolved) << path;
        EXPECT_EQ(made->data, bookmark) << path;
        EXPECT_EQ(made->resolved->url, read->url) << path;
        EXPECT_FALSE(made->resolved->isStale) << path;
        EXPECT_EQ(made->resolved->match, read->match) << path;
    }
}

TEST_F(LinuxBookmarksTest, readsAliasFiles) {
    const std::string file = TOLVANE_SOURCE_DIR "/tests/data/bookmarks/note.alias";
    const auto data = bookmarks.bookmarkDataWithContentsOfURL(urlOf(file));
    ASSERT_TRUE(data);
    EXPECT_EQ(data->size(), 648U);
    EXPECT_EQ(bookmarks.bookmarkDataWithContentsOfURL(urlOf("/")).error().code, 259);
}

TEST_F(LinuxBookmarksTest, refusesWhatItCannotMakeAndWhatIsNoBookmark) {
    const auto made = bookmarks.resolvedBookmarkData(urlOf(folder.path("missing")));
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().code, NSFileReadNoSuchFileError);
    EXPECT_EQ(bookmarks.URLByResolvingBookmarkData({}).error().domain, NSCocoaErrorDomain);
    EXPECT_EQ(failure({}), 259);
}

TEST_F(LinuxBookmarksTest, saysHowItFoundWhatWasRenamedAndWhatWasMoved) {
    fs::create_directories(folder.path("a/b"));
    fs::create_directories(folder.path("z/deep"));
    const Data bookmark = bookmarkOf(folder.file("a/b/file"));
    const auto match = [&] {
        const auto found = bookmarks.URLByResolvingBookmarkData(bookmark);
        return found ? found->match.item : ItemMatch::unknown;
    };
    EXPECT_EQ(match(), ItemMatch::path);
    fs::rename(folder.path("a"), folder.path("x"));
    fs::rename(folder.path("x/b"), folder.path("x/y"));
    fs::rename(folder.path("x/y/file"), folder.path("x/y/other"));
    EXPECT_EQ(resolved(bookmark), real + "/x/y/other");
    EXPECT_EQ(match(), ItemMatch::fileNumbers);
    EXPECT_TRUE(isStale(bookmark));
    fs::rename(folder.path("x/y/other"), folder.path("z/deep/file"));
    EXPECT_EQ(resolved(bookmark), real + "/z/deep/file");
    EXPECT_EQ(match(), ItemMatch::search);
    EXPECT_TRUE(isStale(bookmark));
}

// Some file systems hand the number of a removed file to the next one made.
TEST_F(LinuxBookmarksTest, neverAnswersAFileThatGotTheNumberOfARemovedOne) {
    for (int round = 0; round < 3; ++round) {
        const std::string name = "file" + std::to_string(round);
        const Data bookmark = bookmarkOf(folder.file(name));
        fs::remove(folder.path(name));
        folder.file("later" + std::to_string(round));
        EXPECT_EQ(failure(bookmark), NSFileNoSuchFileError) << resolved(bookmark);
    }
}

TEST_F(LinuxBookmarksTest, answersNoFileOfThisMachineForADiskThatIsNotHere) {
    const Data bookmark = bookmarkOf(folder.file("file"));
    BookmarkContents contents = bookmarkContents(readBookmark(bookmark).value());
    contents.volume.uuid = "0A81F3B1-51D9-3335-B3E3-169C3640360D";
    contents.volume.name = "Macintosh HD";
    contents.volume.capacity = 494'384'795'648;
    EXPECT_EQ(failure(composeBookmark(contents).value()), NSFileNoSuchFileError);
    contents.volume = {};
    EXPECT_EQ(resolved(composeBookmark(contents).value()), real + "/file");
}

TEST_F(LinuxBookmarksTest, readsNoFolderWhenTheItemIsWhereItWas) {
    const std::string closed = folder.folder("closed");
    const Data bookmark = bookmarkOf(folder.file("closed/file"));
    const auto before = tests::statusOf(closed).st_atim;
    EXPECT_EQ(resolved(bookmark), real + "/closed/file");
    const auto after = tests::statusOf(closed).st_atim;
    EXPECT_EQ(std::pair(after.tv_sec, after.tv_nsec), std::pair(before.tv_sec, before.tv_nsec));
}

TEST_F(LinuxBookmarksTest, recognisesAVolumeMountedElsewhereUntilItIsUnmounted) {
    const std::string first = folder.folder("first");
    const std::string second = folder.folder("second");
    tests::expectWithMounts([&] {
        if (!tests::mountMemory(first)) {
            return false;
        }
        folder.folder("first/in");
        const Data bookmark = bookmarkOf(folder.file("first/in/file"));
        EXPECT_EQ(mount(first.c_str(), second.c_str(), nullptr, MS_MOVE, nullptr), 0);
        // A file of the same path on the disk below must not be taken for it.
        fs::create_directory(first + "/in");
        folder.file("first/in/file");
        EXPECT_EQ(resolved(bookmark), real + "/second/in/file");
        EXPECT_FALSE(isStale(bookmark));
        EXPECT_EQ(umount(second.c_str()), 0);
        EXPECT_FALSE(bookmarks.URLByResolvingBookmarkData(bookmark)) << resolved(bookmark);
        fs::remove_all(first + "/in");
        return true;
    });
}

TEST_F(LinuxBookmarksTest, findsAnItemWhoseFolderIsNoLongerMountedOnItsOwn) {
    const std::string source = folder.folder("source");
    const std::string point = folder.folder("point");
    folder.folder("source/etc");
    folder.file("source/etc/hostname", "own");
    tests::expectWithMounts([&] {
        if (!tests::mountAgain(source, point)) {
            return false;
        }
        const Data bookmark = bookmarkOf(point + "/etc/hostname");
        EXPECT_EQ(umount(point.c_str()), 0);
        // Where the search ends early the item may be missed, but never taken for this system's own.
        if (bookmarks.URLByResolvingBookmarkData(bookmark)) {
            EXPECT_EQ(resolved(bookmark), real + "/source/etc/hostname");
            EXPECT_TRUE(isStale(bookmark));
        }
        return true;
    });
}

TEST_F(LinuxBookmarksTest, findsItemsForAProcessWhoseRootIsNoMountPoint) {
    const std::string root = folder.folder("root");
    const std::string proc = folder.folder("root/proc");
    folder.file("root/file");
    tests::expectWithMounts([&] {
        if (mount("proc", proc.c_str(), "proc", 0, nullptr) != 0 || chroot(root.c_str()) != 0
            || chdir("/") != 0) {
            return false;
        }
        const Data bookmark = bookmarkOf("/file");
        EXPECT_EQ(resolved(bookmark), "/file");
        EXPECT_FALSE(isStale(bookmark));
        return true;
    });
}

TEST_F(LinuxBookmarksTest, findsThousandsOfFilesAfterTheyWereRenamed) {
    const auto numbered = [](const std::string& name, int number) {
        return "/" + name + std::to_string(number);
    };
    constexpr int folders = 20;
    constexpr int files = 100;
    std::vector<Data> made;
    for (int i = 0; i < folders; ++i) {
        const std::string old = folder.folder(numbered("folder", i));
        for (int j = 0; j < files; ++j) {
            made.push_back(bookmarkOf(folder.file(numbered("folder", i) + numbered("file", j))));
        }
        for (int j = 0; j < files; j += 2) {
            fs::rename(old + numbered("file", j), old + numbered("renamed", j));
        }
        fs::rename(old, folder.path(numbered("moved", i)));
    }
    auto next = made.begin();
    for (int i = 0; i < folders; ++i) {
        for (int j = 0; j < files; ++j) {
            const Data& bookmark = *next++;
            ASSERT_EQ(
                resolved(bookmark),
                real + numbered("moved", i) + numbered(j % 2 == 0 ? "renamed" : "file", j));
            ASSERT_TRUE(isStale(bookmark));
        }
    }
}

} // namespace
} // namespace tolvane::platform
