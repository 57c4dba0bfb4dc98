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

TEST_F(LinuxMountedVolumesTest, listsTheFoldersInAFolderAndWhatHasTheNumber) {
    const std::string file = folder.file("file");
    folder.folder("folder");
    folder.symlink("link", "folder");
    folder.file("\xFF");
    const auto namesWith = [&](std::uint64_t number) {
        const auto found = volumes.entriesOf(folder.path(), number, 100).value();
        EXPECT_EQ(found.count, 4U);
        std::set<std::string> names;
        for (const FolderEntry& entry : found.entries) {
            EXPECT_EQ(entry.fileNumber, tests::statusOf(folder.path(entry.name)).st_ino) << entry.name;
            EXPECT_LT(entry.position, found.count);
            // Some file systems do not say what an entry is.
            if (entry.name == "folder") {
                EXPECT_TRUE(entry.mayBeFolder);
            }
            if (!entry.mayBeFolder || entry.name == "folder") {
                names.insert(entry.name);
            }
        }
        return names;
    };
    EXPECT_EQ(namesWith(tests::statusOf(file).st_ino).count("folder"), 1U);
    const auto found =
        volumes.entriesOf(folder.path(), tests::statusOf(folder.path("\xFF")).st_ino, 100).value();
    EXPECT_NE(std::ranges::find(found.entries, "\xFF", &FolderEntry::name), found.entries.end());
}

TEST_F(LinuxMountedVolumesTest, readsNoMoreEntriesThanAskedFor) {
    for (const char* name : {"a", "b", "c", "d"}) {
        folder.folder(name);
    }
    EXPECT_EQ(volumes.entriesOf(folder.path(), 0, 3)->count, 3U);
    EXPECT_EQ(volumes.entriesOf(folder.path(), 0, 3)->entries.size(), 3U);
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
