#include "platform/linux/bookmarks/LinuxBookmarks.h"

#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/values/Error.h"
#include "tests/support/MountNamespace.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvane::platform {
namespace {

namespace fs = std::filesystem;

Data bookmarkOf(LinuxBookmarks& bookmarks, const std::string& path) {
    const auto data = bookmarks.bookmarkData(URL::fileURLWithPath(path));
    EXPECT_TRUE(data) << path << ": " << data.error().localizedDescription();
    return data.value_or(Data());
}

/// The real path, but for a final link.
std::string realPath(const std::string& path) {
    const fs::path whole(path);
    return (fs::canonical(whole.parent_path()) / whole.filename()).string();
}

class LinuxBookmarksTest : public testing::Test {
protected:
    Data bookmarkOf(const std::string& path) { return platform::bookmarkOf(bookmarks, path); }

    std::string resolved(const Data& bookmark) const {
        const auto found = bookmarks.URLByResolvingBookmarkData(bookmark);
        return found ? found->url.value().path() : found.error().localizedDescription();
    }

    bool isStale(const Data& bookmark) const {
        const auto found = bookmarks.URLByResolvingBookmarkData(bookmark);
        return found && found->isStale;
    }

    std::int64_t failure(const Data& bookmark) const {
        const auto found = bookmarks.URLByResolvingBookmarkData(bookmark);
        return found ? 0 : found.error().code;
    }

    tests::TemporaryFolder folder;
    std::string home = realPath(folder.path());
    LinuxBookmarks bookmarks;
};

TEST_F(LinuxBookmarksTest, readsAliasFiles) {
    const std::string file = TOLVANE_SOURCE_DIR "/tests/data/bookmarks/note.alias";
    const auto data = bookmarks.bookmarkDataWithContentsOfURL(URL::fileURLWithPath(file));
    ASSERT_TRUE(data);
    EXPECT_EQ(data->size(), 648U);
    EXPECT_EQ(bookmarks.bookmarkDataWithContentsOfURL(URL::fileURLWithPath("/")).error().code, 259);
}

TEST_F(LinuxBookmarksTest, makesBookmarks) {
    const auto structure = readBookmark(bookmarkOf("/dev/null"));
    ASSERT_TRUE(structure);
    EXPECT_EQ(bookmarkContents(*structure).pathComponents, (std::vector<std::string>{"dev", "null"}));
    EXPECT_EQ(bookmarks.bookmarkData(URL::fileURLWithPath(folder.path("missing"))).error().code, 260);
}

TEST_F(LinuxBookmarksTest, refusesWhatIsNoBookmark) {
    const auto found = bookmarks.URLByResolvingBookmarkData({});
    ASSERT_FALSE(found);
    EXPECT_EQ(found.error().domain, NSCocoaErrorDomain);
    EXPECT_EQ(found.error().code, 259);
}

TEST_F(LinuxBookmarksTest, findsItemsOfEveryKindWhereTheyWere) {
    for (const std::string& path :
         {folder.file("file"), folder.folder("folder"), folder.symlink("link", "file"),
          folder.symlink("dangling", "nowhere"), folder.fifo("fifo"), folder.socket("socket"),
          std::string("/dev/null"), std::string("/proc/version"), std::string("/"),
          std::string("/dev/shm")}) {
        const Data bookmark = bookmarkOf(path);
        EXPECT_EQ(resolved(bookmark), realPath(path));
        EXPECT_FALSE(isStale(bookmark)) << path;
    }
}

TEST_F(LinuxBookmarksTest, findsARenamedFile) {
    const Data bookmark = bookmarkOf(folder.file("may"));
    fs::rename(folder.path("may"), folder.path("june"));
    EXPECT_EQ(resolved(bookmark), home + "/june");
    EXPECT_TRUE(isStale(bookmark));
}

TEST_F(LinuxBookmarksTest, findsAFileBelowRenamedFolders) {
    folder.folder("a");
    folder.folder("a/b");
    const Data bookmark = bookmarkOf(folder.file("a/b/file"));
    fs::rename(folder.path("a"), folder.path("x"));
    EXPECT_EQ(resolved(bookmark), home + "/x/b/file");
    fs::rename(folder.path("x/b"), folder.path("x/y"));
    fs::rename(folder.path("x/y/file"), folder.path("x/y/other"));
    EXPECT_EQ(resolved(bookmark), home + "/x/y/other");
    EXPECT_EQ(bookmarks.URLByResolvingBookmarkData(bookmark)->match.item, ItemMatch::fileNumbers);
    EXPECT_TRUE(isStale(bookmark));
}

TEST_F(LinuxBookmarksTest, findsAMovedFileAndAMovedFolder) {
    folder.folder("a");
    folder.folder("a/b");
    folder.folder("z");
    folder.folder("z/deep");
    const Data file = bookmarkOf(folder.file("a/b/file"));
    const Data moved = bookmarkOf(folder.path("a/b"));
    fs::rename(folder.path("a/b"), folder.path("z/deep/b"));
    EXPECT_EQ(resolved(moved), home + "/z/deep/b");
    EXPECT_EQ(resolved(file), home + "/z/deep/b/file");
    fs::rename(folder.path("z/deep/b/file"), folder.path("a/file"));
    EXPECT_EQ(resolved(file), home + "/a/file");
    EXPECT_EQ(bookmarks.URLByResolvingBookmarkData(file)->match.item, ItemMatch::search);
    EXPECT_TRUE(isStale(file));
}

TEST_F(LinuxBookmarksTest, prefersANewFileOfTheOldName) {
    const Data bookmark = bookmarkOf(folder.file("may"));
    fs::rename(folder.path("may"), folder.path("june"));
    folder.file("may", "another");
    EXPECT_EQ(resolved(bookmark), home + "/may");
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
    EXPECT_EQ(resolved(composeBookmark(contents).value()), home + "/file");
}

TEST_F(LinuxBookmarksTest, readsNoFolderWhenTheItemIsWhereItWas) {
    folder.folder("closed");
    const Data bookmark = bookmarkOf(folder.file("closed/file"));
    struct stat before{};
    ASSERT_EQ(stat(folder.path("closed").c_str(), &before), 0);
    EXPECT_EQ(resolved(bookmark), home + "/closed/file");
    struct stat after{};
    ASSERT_EQ(stat(folder.path("closed").c_str(), &after), 0);
    EXPECT_EQ(after.st_atim.tv_sec, before.st_atim.tv_sec);
    EXPECT_EQ(after.st_atim.tv_nsec, before.st_atim.tv_nsec);
}

TEST_F(LinuxBookmarksTest, recognisesAVolumeMountedElsewhere) {
    enum Outcome { found = 1, wrongPath, stale, notFound, notMadeUp };
    const std::string first = folder.folder("first");
    const std::string second = folder.folder("second");
    const int outcome = tests::answerInMountNamespace([&]() -> int {
        if (mount("stick", first.c_str(), "tmpfs", 0, "size=1234k") != 0) {
            return tests::noMounting;
        }
        folder.folder("first/in");
        folder.file("first/in/file");
        LinuxBookmarks own;
        const auto bookmark = own.bookmarkData(URL::fileURLWithPath(first + "/in/file"));
        if (!bookmark || mount(first.c_str(), second.c_str(), nullptr, MS_MOVE, nullptr) != 0) {
            return notMadeUp;
        }
        // A file of the same path on the disk below must not be taken for it.
        fs::create_directory(first + "/in");
        folder.file("first/in/file");
        const auto where = own.URLByResolvingBookmarkData(*bookmark);
        fs::remove_all(first + "/in");
        if (!where) {
            return notFound;
        }
        return where->url->path() != realPath(second) + "/in/file" ? wrongPath
               : where->isStale                                    ? stale
                                                                   : found;
    });
    if (outcome == tests::noMounting) {
        GTEST_SKIP() << "nothing may be mounted here";
    }
    EXPECT_EQ(outcome, found);
}

TEST_F(LinuxBookmarksTest, failsForAVolumeThatWasUnmounted) {
    enum Outcome { refused = 1, answered, notMadeUp };
    const std::string point = folder.folder("point");
    const int outcome = tests::answerInMountNamespace([&]() -> int {
        if (mount("stick", point.c_str(), "tmpfs", 0, "size=1234k") != 0) {
            return tests::noMounting;
        }
        folder.file("point/file");
        LinuxBookmarks own;
        const auto bookmark = own.bookmarkData(URL::fileURLWithPath(point + "/file"));
        if (!bookmark || umount(point.c_str()) != 0) {
            return notMadeUp;
        }
        folder.file("point/file");
        return own.URLByResolvingBookmarkData(*bookmark) ? answered : refused;
    });
    if (outcome == tests::noMounting) {
        GTEST_SKIP() << "nothing may be mounted here";
    }
    EXPECT_EQ(outcome, refused);
}

TEST_F(LinuxBookmarksTest, findsAnItemWhoseFolderIsNoLongerMountedOnItsOwn) {
    enum Outcome { found = 1, answeredAnother, notFound, notMadeUp };
    const std::string source = folder.folder("source");
    const std::string point = folder.folder("point");
    folder.folder("source/etc");
    folder.file("source/etc/hostname", "own");
    const int outcome = tests::answerInMountNamespace([&]() -> int {
        if (mount(source.c_str(), point.c_str(), nullptr, MS_BIND, nullptr) != 0) {
            return tests::noMounting;
        }
        LinuxBookmarks own;
        const auto bookmark = own.bookmarkData(URL::fileURLWithPath(point + "/etc/hostname"));
        if (!bookmark || umount(point.c_str()) != 0) {
            return notMadeUp;
        }
        const auto where = own.URLByResolvingBookmarkData(*bookmark);
        if (!where) {
            return notFound;
        }
        return where->url->path() == realPath(source) + "/etc/hostname" && where->isStale ? found
                                                                                          : answeredAnother;
    });
    if (outcome == tests::noMounting) {
        GTEST_SKIP() << "nothing may be mounted here";
    }
    // Where the search for it ends early it may be missed, but never taken for this system's own.
    EXPECT_TRUE(outcome == found || outcome == notFound) << outcome;
}

TEST_F(LinuxBookmarksTest, findsItemsForAProcessWhoseRootIsNoMountPoint) {
    enum Outcome { found = 1, foundElsewhere, notFound, notMadeUp };
    const std::string root = folder.folder("root");
    folder.folder("root/proc");
    folder.file("root/file");
    const int outcome = tests::answerInMountNamespace([&]() -> int {
        const bool isInside = mount("proc", (root + "/proc").c_str(), "proc", 0, nullptr) == 0
                              && chroot(root.c_str()) == 0 && chdir("/") == 0;
        if (!isInside) {
            return tests::noMounting;
        }
        LinuxBookmarks own;
        const auto bookmark = own.bookmarkData(URL::fileURLWithPath("/file"));
        if (!bookmark) {
            return notMadeUp;
        }
        const auto where = own.URLByResolvingBookmarkData(*bookmark);
        if (!where) {
            return notFound;
        }
        return where->url->path() == "/file" && !where->isStale ? found : foundElsewhere;
    });
    if (outcome == tests::noMounting) {
        GTEST_SKIP() << "nothing may be mounted here";
    }
    EXPECT_EQ(outcome, found);
}

// Whatever lies on the system's own disks, as far as it has names that a bookmark can hold.
TEST_F(LinuxBookmarksTest, findsThousandsOfFilesWhereTheyAre) {
    constexpr std::size_t wanted = 4'000;
    std::size_t compared = 0;
    for (const char* top : {"/usr/share", "/usr/lib", "/etc"}) {
        std::error_code error;
        fs::recursive_directory_iterator items(top, fs::directory_options::skip_permission_denied, error);
        for (const auto end = fs::end(items); items != end && compared < wanted; items.increment(error)) {
            const std::string path = items->path().string();
            const auto bookmark = bookmarks.bookmarkData(URL::fileURLWithPath(path));
            if (!bookmark) {
                continue;
            }
            const auto found = bookmarks.URLByResolvingBookmarkData(*bookmark);
            ASSERT_TRUE(found) << path << ": " << found.error().localizedDescription();
            ASSERT_EQ(found->url->path(), realPath(path));
            ASSERT_FALSE(found->isStale) << path;
            ++compared;
        }
    }
    EXPECT_GE(compared, 1'000U);
}

TEST_F(LinuxBookmarksTest, findsThousandsOfFilesAfterTheyWereRenamed) {
    constexpr int folders = 20;
    constexpr int files = 100;
    std::vector<Data> made;
    for (int i = 0; i < folders; ++i) {
        const std::string name = "folder" + std::to_string(i);
        folder.folder(name);
        for (int j = 0; j < files; ++j) {
            made.push_back(bookmarkOf(folder.file(name + "/file" + std::to_string(j))));
        }
    }
    for (int i = 0; i < folders; ++i) {
        const std::string old = folder.path("folder" + std::to_string(i));
        for (int j = 0; j < files; j += 2) {
            fs::rename(old + "/file" + std::to_string(j), old + "/renamed" + std::to_string(j));
        }
        fs::rename(old, folder.path("moved" + std::to_string(i)));
    }
    auto next = made.begin();
    for (int i = 0; i < folders; ++i) {
        for (int j = 0; j < files; ++j) {
            const Data& bookmark = *next++;
            const std::string name = (j % 2 == 0 ? "renamed" : "file") + std::to_string(j);
            ASSERT_EQ(resolved(bookmark), home + "/moved" + std::to_string(i) + "/" + name);
            ASSERT_TRUE(isStale(bookmark));
        }
    }
}

} // namespace
} // namespace tolvane::platform
