#include "platform/qt/preview/FolderCount.h"

#include "tests/platform/qt/preview/PreviewTest.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tolvane::platform {
namespace {

class FolderCountTest : public tests::PreviewTest {
protected:
    FolderCount count(
        const std::string& path, std::uint64_t limit = mostItemsCounted, std::uint64_t volume = 0) const {
        FolderCount latest;
        const auto keepLatest = [&](const FolderCount& current) {
            latest = current;
            return true;
        };
        EXPECT_TRUE(countFolder(
            files, path, volume != 0 ? volume : files.lookAtTarget(path)->volume, keepLatest, limit));
        return latest;
    }

    PosixFileContents files;
};

TEST_F(FolderCountTest, countsWhatIsBeneathToo) {
    folder.folder("a");
    folder.folder("a/b");
    folder.file("one", "1");
    folder.file("a/two", "22");
    folder.file("a/b/three", "333");
    folder.fifo("a/fifo");
    EXPECT_EQ(count(folder.path()), (FolderCount{2, 6, 2, 6, 0, 0, true}));
}

TEST_F(FolderCountTest, followsNoLinkButTheOneItIsGiven) {
    folder.folder("a");
    folder.file("a/file", "12345");
    folder.symlink("a/up", "..");
    folder.symlink("a/elsewhere", "/usr");
    EXPECT_EQ(count(folder.symlink("link", "a")), (FolderCount{3, 3, 0, 5, 0, 0, true}));
}

TEST_F(FolderCountTest, staysOnTheVolume) {
    folder.folder("a");
    folder.file("a/file", "12345");
    constexpr std::uint64_t anotherVolume = UINT64_MAX;
    EXPECT_EQ(count(folder.path(), mostItemsCounted, anotherVolume), (FolderCount{1, 1, 1, 0, 0, 1, true}));
}

TEST_F(FolderCountTest, stopsAtItsLimit) {
    for (int index = 0; index < 10; ++index) {
        folder.file("file" + std::to_string(index), "x");
    }
    EXPECT_EQ(count(folder.path(), 10).isComplete, true);
    EXPECT_EQ(count(folder.path(), 9), (FolderCount{9, 9, 0, 9, 0, 0, false}));
}

TEST_F(FolderCountTest, stopsWhenItIsNoLongerWanted) {
    for (int index = 0; index < 20'000; ++index) {
        folder.file("file" + std::to_string(index));
    }
    int calls = 0;
    const auto volume = files.lookAtItem(folder.path())->volume;
    EXPECT_TRUE(countFolder(files, folder.path(), volume, [&](const FolderCount&) {
        ++calls;
        return false;
    }));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(count(folder.path()).entries, 20'000U);
}

TEST_F(FolderCountTest, reportsWhyAFolderCannotBeRead) {
    const auto counted =
        countFolder(files, folder.path("missing"), 0, [](const FolderCount&) { return true; });
    ASSERT_FALSE(counted);
    EXPECT_EQ(counted.error(), std::error_code(ENOENT, std::generic_category()));
}

} // namespace
} // namespace tolvane::platform
