#include "platform/linux/bookmarks/LinuxMountedVolumes.h"

#include "platform/linux/volumes/CurrentMounts.h"
#include "platform/values/Error.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace tolvane::platform {
namespace {

class LinuxMountedVolumesTest : public testing::Test {
protected:
    struct stat statusOf(const std::string& path) const {
        struct stat status{};
        EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
        return status;
    }

    const MountedVolume* volumeWithID(std::uint64_t id) {
        all = volumes.volumes();
        const auto found = std::ranges::find(all, id, &MountedVolume::id);
        return found == all.end() ? nullptr : &*found;
    }

    tests::TemporaryFolder folder;
    CurrentMounts mounts;
    VolumeFacts facts;
    LinuxMountedVolumes volumes{mounts.table().value(), facts};
    std::vector<MountedVolume> all;
};

TEST_F(LinuxMountedVolumesTest, tellsTheVolumeThatAnItemIsOn) {
    for (const std::string path : {"/", "/proc", "/dev"}) {
        const auto item = volumes.itemAt(path);
        ASSERT_TRUE(item) << path;
        const MountedVolume* const volume = volumeWithID(item->volume);
        ASSERT_NE(volume, nullptr) << path;
        EXPECT_EQ(volume->mountPoint, path);
        EXPECT_TRUE(volume->name) << path;
    }
}

TEST_F(LinuxMountedVolumesTest, tellsCapacities) {
    struct statvfs expected{};
    ASSERT_EQ(statvfs("/", &expected), 0);
    const MountedVolume* const root = volumeWithID(volumes.itemAt("/")->volume);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(volumes.capacity(*root), static_cast<std::int64_t>(expected.f_blocks * expected.f_frsize));
    const MountedVolume* const kernelView = volumeWithID(volumes.itemAt("/proc")->volume);
    ASSERT_NE(kernelView, nullptr);
    EXPECT_EQ(volumes.capacity(*kernelView), std::nullopt);
    EXPECT_EQ(volumes.uuid(*kernelView), std::nullopt);
}

TEST_F(LinuxMountedVolumesTest, knowsNothingOfAVolumeThatIsNoLongerMounted) {
    MountedVolume gone;
    gone.id = ~std::uint64_t{0};
    EXPECT_EQ(volumes.uuid(gone), std::nullopt);
    EXPECT_EQ(volumes.capacity(gone), std::nullopt);
}

TEST_F(LinuxMountedVolumesTest, looksAtItemsThemselves) {
    const std::string file = folder.file("file");
    const std::map<std::string, ItemKind> kinds{
        {file, ItemKind::regularFile},
        {folder.folder("folder"), ItemKind::folder},
        {folder.symlink("link", "folder"), ItemKind::symbolicLink},
        {folder.fifo("fifo"), ItemKind::fifo},
    };
    for (const auto& [path, kind] : kinds) {
        const auto item = volumes.itemAt(path);
        ASSERT_TRUE(item) << path;
        EXPECT_EQ(item->kind, kind) << path;
        EXPECT_EQ(item->fileNumber, statusOf(path).st_ino) << path;
    }
}

TEST_F(LinuxMountedVolumesTest, tellsWhyAnItemCannotBeLookedAt) {
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
        EXPECT_EQ(entry.fileNumber, statusOf(folder.path(entry.name)).st_ino) << entry.name;
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
