#include "platform/qt/preview/FolderCount.h"

#include "tests/platform/qt/preview/PreviewTest.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::platform {
namespace {

class FolderCountTest : public tests::PreviewTest {
protected:
    FolderCount count(const std::string& path, std::uint64_t limit = mostItemsCounted) const {
        const auto item = files.lookAtTarget(path);
        EXPECT_TRUE(item);
        FolderCount latest;
        EXPECT_TRUE(countFolder(
            files, path, item->volume,
            [&](const FolderCount& told) {
                latest = told;
                return true;
            },
            limit));
        return latest;
    }

    LinuxFileContents files;
};

TEST_F(FolderCountTest, countsWhatIsBeneathToo) {
    folder.folder("a");
    folder.folder("a/b");
    folder.file("one", "1");
    folder.file("a/two", "22");
    folder.file("a/b/three", "333");
    folder.fifo("a/fifo");
    const FolderCount expected{2, 6, 2, 6, 0, 0, true};
    EXPECT_EQ(count(folder.path()), expected);
}

TEST_F(FolderCountTest, followsNoLinkButTheOneItIsGiven) {
    folder.folder("a");
    folder.file("a/file", "12345");
    folder.symlink("a/up", "..");
    folder.symlink("a/elsewhere", "/usr");
    const FolderCount expected{3, 3, 0, 5, 0, 0, true};
    EXPECT_EQ(count(folder.symlink("link", "a")), expected);
}

TEST_F(FolderCountTest, staysOnTheVolume) {
    // The volume is given as another one than it is, so every folder beneath seems to be elsewhere.
    folder.folder("a");
    folder.file("a/file", "12345");
    FolderCount latest;
    EXPECT_TRUE(countFolder(files, folder.path(), UINT64_MAX, [&](const FolderCount& told) {
        latest = told;
        return true;
    }));
    const FolderCount expected{1, 1, 1, 0, 0, 1, true};
    EXPECT_EQ(latest, expected);
}

TEST_F(FolderCountTest, stopsAtItsLimit) {
    for (int index = 0; index < 10; ++index) {
        folder.file("file" + std::to_string(index), "x");
    }
    EXPECT_EQ(count(folder.path(), 10).isComplete, true);
    const FolderCount expected{9, 9, 0, 9, 0, 0, false};
    EXPECT_EQ(count(folder.path(), 9), expected);
}

TEST_F(FolderCountTest, stopsWhenNobodyWantsItAnyMore) {
    for (int index = 0; index < 20'000; ++index) {
        folder.file("file" + std::to_string(index));
    }
    int told = 0;
    const auto volume = files.lookAtItem(folder.path())->volume;
    EXPECT_TRUE(countFolder(files, folder.path(), volume, [&](const FolderCount&) {
        ++told;
        return false;
    }));
    EXPECT_EQ(told, 1);
    EXPECT_EQ(count(folder.path()).entries, 20'000U);
}

TEST_F(FolderCountTest, tellsWhyAFolderCannotBeRead) {
    const auto counted =
        countFolder(files, folder.path("missing"), 0, [](const FolderCount&) { return true; });
    ASSERT_FALSE(counted);
    EXPECT_EQ(counted.error(), std::error_code(ENOENT, std::generic_category()));
}

} // namespace
} // namespace tolvane::platform
