#include "platform/linux/bookmarks/LinuxMountedVolumes.h"

#include "platform/linux/volumes/CurrentMounts.h"
#include "platform/values/Error.h"
#include "tests/platform/linux/FolderTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
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
    const std::map<std::string, ItemKind> kinds{
        {folder.file("file"), ItemKind::regularFile},
        {folder.folder("folder"), ItemKind::folder},
        {folder.symlink("link", "folder"), ItemKind::symbolicLink},
        {folder.fifo("fifo"), ItemKind::fifo}};
    for (const auto& [path, kind] : kinds) {
        const auto item = volumes.itemAt(path);
        ASSERT_TRUE(item) << path;
        EXPECT_EQ(item->kind, kind) << path;
        EXPECT_EQ(item->fileNumber, tests::statusOf(path).st_ino) << path;
    }
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

TEST_F(LinuxMountedVolumesTest, listsWhatAFolderHolds) {
    folder.file("file");
    folder.folder("folder");
    folder.symlink("link", "folder");
    folder.file("\xFF");
    const auto entries = volumes.entriesOf(folder.path(), 100);
    ASSERT_TRUE(entries);
    std::set<std::string> names;
    for (const FolderEntry& entry : *entries) {
        names.insert(entry.name);
        EXPECT_EQ(entry.fileNumber, tests::statusOf(folder.path(entry.name)).st_ino) << entry.name;
        if (entry.name == "folder") {
            EXPECT_TRUE(entry.mayBeFolder);
        }
    }
    EXPECT_EQ(names, (std::set<std::string>{"file", "folder", "link", "\xFF"}));
    EXPECT_EQ(volumes.entriesOf(folder.path(), 3)->size(), 3U);
    EXPECT_TRUE(volumes.entriesOf(folder.path("folder"), 3)->empty());
}

TEST_F(LinuxMountedVolumesTest, readsNothingButFolders) {
    folder.folder("folder");
    for (const std::string& path :
         {folder.file("file"), folder.fifo("fifo"), folder.symlink("link", "folder"),
          folder.path("missing")}) {
        EXPECT_FALSE(volumes.entriesOf(path, 10)) << path;
    }
}

} // namespace
} // namespace tolvane::platform
