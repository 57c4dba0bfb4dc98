#include "platform/linux/bookmarks/LinuxMountedVolumes.h"

#include "platform/linux/volumes/CurrentMounts.h"
#include "platform/values/Error.h"
#include "tests/platform/linux/FolderTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>
#include <sys/statvfs.h>

namespace tolvane::platform {
namespace {

class LinuxMountedVolumesTest : public tests::FolderTest {
protected:
    /// The volume that the item is on.
    const MountedVolume* volumeOf(const std::string& path) {
        all = volumes.volumes();
        const auto found = std::ranges::find(all, volumes.itemAt(path)->volume, &MountedVolume::id);
        return found == all.end() ? nullptr : &*found;
    }

    CurrentMounts mounts;
    VolumeFacts facts;
    LinuxMountedVolumes volumes{mounts.table().value(), facts};
    std::vector<MountedVolume> all;
};

TEST_F(LinuxMountedVolumesTest, reportsTheVolumeThatAnItemIsOn) {
    for (const std::string path : {"/", "/proc", "/dev"}) {
        const MountedVolume* const volume = volumeOf(path);
        ASSERT_NE(volume, nullptr) << path;
        EXPECT_EQ(volume->mountPoint, path);
        EXPECT_TRUE(volume->name) << path;
    }
}

TEST_F(LinuxMountedVolumesTest, reportsCapacitiesOfMountedVolumesOnly) {
    struct statvfs expected{};
    ASSERT_EQ(statvfs("/", &expected), 0);
    const MountedVolume* const root = volumeOf("/");
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(volumes.capacity(*root), static_cast<std::int64_t>(expected.f_blocks * expected.f_frsize));
    const MountedVolume* const kernelView = volumeOf("/proc");
    ASSERT_NE(kernelView, nullptr);
    EXPECT_EQ(volumes.capacity(*kernelView), std::nullopt);
    EXPECT_EQ(volumes.uuid(*kernelView), std::nullopt);
    MountedVolume gone;
    gone.id = ~std::uint64_t{0};
    EXPECT_EQ(volumes.uuid(gone), std::nullopt);
    EXPECT_EQ(volumes.capacity(gone), std::nullopt);
}

TEST_F(LinuxMountedVolumesTest, looksAtItemsThemselves) {
    const std::string link = folder.symlink("link", folder.folder("folder"));
    const auto item = volumes.itemAt(link);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->kind, ItemKind::symbolicLink);
    EXPECT_EQ(item->fileNumber, tests::statusOf(link).st_ino);
}

TEST_F(LinuxMountedVolumesTest, reportsWhyAnItemCannotBeLookedAt) {
    const auto missing = volumes.itemAt(folder.path("missing"));
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().domain, NSCocoaErrorDomain);
    EXPECT_EQ(missing.error().code, NSFileReadNoSuchFileError);
    EXPECT_EQ(
        missing.error().localizedDescription(), folder.path("missing") + ": No such file or directory.");
    folder.symlink("loop", "loop");
    EXPECT_EQ(volumes.itemAt(folder.path("loop/x")).error().code, NSFileReadNoSuchFileError);
    EXPECT_EQ(volumes.itemAt(folder.path(std::string(300, 'x'))).error().code, NSFileReadUnknownError);
}

TEST_F(LinuxMountedVolumesTest, listsTheFoldersInAFolderAndWhatHasTheNumber) {
    folder.file("file");
    folder.folder("folder");
    folder.symlink("link", "folder");
    folder.file("\xFF");
    const std::uint64_t number = tests::statusOf(folder.path("\xFF")).st_ino;
    const auto found = volumes.entriesOf(folder.path(), number, 100).value();
    EXPECT_EQ(found.count, 4U);
    std::map<std::string, bool> mayBeFolder;
    for (const FolderEntry& entry : found.entries) {
        EXPECT_EQ(entry.fileNumber, tests::statusOf(folder.path(entry.name)).st_ino) << entry.name;
        EXPECT_LT(entry.position, found.count);
        mayBeFolder[entry.name] = entry.mayBeFolder;
    }
    EXPECT_TRUE(mayBeFolder.contains("\xFF"));
    // Some file systems do not say what an entry is.
    EXPECT_TRUE(mayBeFolder["folder"]);
    for (const std::string other : {"file", "link"}) {
        EXPECT_TRUE(!mayBeFolder.contains(other) || mayBeFolder[other]) << other << " was not asked for";
    }
}

TEST_F(LinuxMountedVolumesTest, readsNoMoreEntriesThanAskedFor) {
    for (const char* name : {"a", "b", "c", "d"}) {
        folder.folder(name);
    }
    const auto found = volumes.entriesOf(folder.path(), 0, 3).value();
    EXPECT_EQ(found.count, 3U);
    EXPECT_EQ(found.entries.size(), 3U);
    EXPECT_EQ(volumes.entriesOf(folder.path("a"), 0, 3)->count, 0U);
}

TEST_F(LinuxMountedVolumesTest, readsNothingButFolders) {
    folder.folder("folder");
    for (const std::string& path :
         {folder.file("file"), folder.fifo("fifo"), folder.symlink("link", "folder"),
          folder.path("missing")}) {
        EXPECT_FALSE(volumes.entriesOf(path, 0, 10)) << path;
    }
}

} // namespace
} // namespace tolvane::platform
