// What bookmarks do on every system.
#include "tests/contracts/SystemUnderTest.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tolvane::tests::contracts {

namespace fs = std::filesystem;
using platform::Data;

using BookmarksContract = ContractTest;

TEST_F(BookmarksContract, itemsAreFoundWhereTheyWere) {
    for (const auto& path : {folder.file("file"), folder.folder("folder"), folder.file("a b#\u00E4%20")}) {
        const Data bookmark = bookmarkOf(path);
        EXPECT_EQ(resolved(bookmark), real + path.substr(folder.path().size()));
        EXPECT_FALSE(isStale(bookmark)) << path;
    }
}

TEST_F(BookmarksContract, aRenamedFileIsFoundBelowRenamedFoldersToo) {
    fs::create_directories(folder.path("a/b"));
    const Data bookmark = bookmarkOf(folder.file("a/b/file", "abc"));
    fs::rename(folder.path("a/b/file"), folder.path("a/b/after"));
    EXPECT_EQ(resolved(bookmark), real + "/a/b/after");
    EXPECT_TRUE(isStale(bookmark));
    fs::rename(folder.path("a/b/after"), folder.path("a/b/file"));
    fs::rename(folder.path("a"), folder.path("x"));
    fs::rename(folder.path("x/b"), folder.path("x/y"));
    EXPECT_EQ(resolved(bookmark), real + "/x/y/file");
}

TEST_F(BookmarksContract, aMovedFileAndAMovedFolderAreFound) {
    fs::create_directories(folder.path("a/b"));
    folder.folder("z");
    const Data file = bookmarkOf(folder.file("a/b/file"));
    const Data below = bookmarkOf(folder.path("a/b"));
    fs::rename(folder.path("a/b"), folder.path("z/b"));
    EXPECT_EQ(resolved(below), real + "/z/b");
    EXPECT_EQ(resolved(file), real + "/z/b/file");
    fs::rename(folder.path("z/b/file"), folder.path("a/file"));
    EXPECT_EQ(resolved(file), real + "/a/file");
    EXPECT_TRUE(isStale(file));
}

TEST_F(BookmarksContract, aNewFileOfTheOldNameIsPreferred) {
    const Data bookmark = bookmarkOf(folder.file("may"));
    fs::rename(folder.path("may"), folder.path("june"));
    folder.file("may", "another");
    EXPECT_EQ(resolved(bookmark), real + "/may");
    EXPECT_TRUE(isStale(bookmark));
}

TEST_F(BookmarksContract, aRemovedFileIsNotFound) {
    const Data bookmark = bookmarkOf(folder.file("file"));
    fs::remove(folder.path("file"));
    const auto found = system.bookmarks->URLByResolvingBookmarkData(bookmark);
    ASSERT_FALSE(found) << resolved(bookmark);
    EXPECT_FALSE(found.error().localizedDescription().empty());
}

TEST_F(BookmarksContract, whatIsNoBookmarkIsRefused) {
    EXPECT_FALSE(system.bookmarks->URLByResolvingBookmarkData({}));
    EXPECT_FALSE(system.bookmarks->URLByResolvingBookmarkData(Data(100)));
    Data cut = bookmarkOf(folder.file("file"));
    cut.resize(cut.size() / 2);
    EXPECT_FALSE(system.bookmarks->URLByResolvingBookmarkData(cut));
}

TEST_F(BookmarksContract, noneIsMadeOfMissingItemsAndOfOtherAddresses) {
    EXPECT_FALSE(system.bookmarks->bookmarkData(urlOf(folder.path("none"))));
    const auto page = platform::URL::fromText("https://example.org/a").value();
    EXPECT_FALSE(system.bookmarks->bookmarkData(page));
    EXPECT_FALSE(system.bookmarks->bookmarkDataWithContentsOfURL(page));
}

TEST_F(BookmarksContract, filesThatHaveNoneAndFoldersAreRefused) {
    EXPECT_FALSE(system.bookmarks->bookmarkDataWithContentsOfURL(urlOf(folder.file("text", "no bookmark"))));
    EXPECT_FALSE(system.bookmarks->bookmarkDataWithContentsOfURL(urlOf(folder.path())));
    EXPECT_FALSE(system.bookmarks->bookmarkDataWithContentsOfURL(urlOf(folder.path("none"))));
}

} // namespace tolvane::tests::contracts
