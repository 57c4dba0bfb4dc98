#include "platform/linux/volumes/BlockDevice.h"

#include "tests/platform/linux/FolderTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/sysmacros.h>

namespace tolvane::platform {
namespace {

using testing::Pair;
using testing::UnorderedElementsAre;

/// A tree of devices as in /sys.
class BlockDevices : public testing::Test {
protected:
    BlockDevices() { std::filesystem::create_directories(tree.path("dev/block")); }

    void addDevice(const std::string& number, const std::string& path) const {
        std::filesystem::create_directories(tree.path(path));
        tree.symlink("dev/block/" + number, "../../" + path);
    }

    BlockDevice device(unsigned majorNumber, unsigned minorNumber) const {
        return blockDeviceInFolder(tree.path("dev/block"), makedev(majorNumber, minorNumber));
    }

    const tests::TemporaryFolder tree;
};

constexpr BlockDevice builtIn{true, false, false, false};
constexpr BlockDevice attachedByCable{false, true, false, false};
constexpr BlockDevice imageFile{false, false, false, true};
constexpr BlockDevice unknown{};

TEST_F(BlockDevices, areInternalUnlessACableLeadsToThem) {
    addDevice("8:0", "devices/pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0/block/sda");
    addDevice("8:1", "devices/pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0/block/sda/sda1");
    addDevice("259:1", "devices/pci0000:00/0000:01:00.0/nvme/nvme0/nvme0n1/nvme0n1p1");
    addDevice("8:17", "devices/pci0000:00/0000:00:14.0/usb2/2-1/2-1:1.0/host1/block/sdb/sdb1");
    EXPECT_EQ(device(8, 0), builtIn);
    EXPECT_EQ(device(8, 1), builtIn);
    EXPECT_EQ(device(259, 1), builtIn);
    EXPECT_EQ(device(8, 17), attachedByCable);
}

TEST_F(BlockDevices, askTheDiskOfAPartWhetherItCanBeRemoved) {
    const std::string stick = "devices/pci0000:00/0000:00:14.0/usb2/2-1/block/sdc";
    addDevice("8:33", stick + "/sdc1");
    tree.file(stick + "/removable", "1\n");
    EXPECT_EQ(device(8, 33), (BlockDevice{false, true, true, false}));
    const std::string disk = "devices/pci0000:00/0000:00:17.0/ata1/block/sda";
    addDevice("8:0", disk);
    tree.file(disk + "/removable", "0\n");
    EXPECT_EQ(device(8, 0), builtIn);
}

TEST_F(BlockDevices, knowCardsForRemovable) {
    const std::string card = "devices/pci0000:00/0000:02:00.0/mmc_host/mmc0/mmc0:aaaa/block/mmcblk0";
    addDevice("179:1", card + "/mmcblk0p1");
    tree.file(card + "/removable", "0\n");
    std::filesystem::create_directories(tree.path(card + "/device"));
    tree.file(card + "/device/type", "SD\n");
    EXPECT_EQ(device(179, 1), (BlockDevice{true, false, true, false}));
    tree.file(card + "/device/type", "MMC\n");
    EXPECT_EQ(device(179, 1), builtIn);
}

TEST_F(BlockDevices, knowDiskImagesAndNothingOfMemoryAndOfNoKnownKind) {
    addDevice("7:0", "devices/virtual/block/loop0");
    addDevice("259:7", "devices/virtual/block/loop1/loop1p1");
    addDevice("253:1", "devices/virtual/block/zram0");
    EXPECT_EQ(device(7, 0), imageFile);
    EXPECT_EQ(device(259, 7), imageFile);
    EXPECT_EQ(device(253, 1), unknown);
    EXPECT_EQ(device(9, 9), unknown);
}

TEST_F(BlockDevices, areWhatTheyAreMadeOfEvenWhereOneIsMadeOfItself) {
    const std::string mapped = "devices/virtual/block/dm-0";
    addDevice("253:0", mapped);
    addDevice("8:1", "devices/pci0000:00/0000:00:17.0/ata1/block/sda/sda1");
    addDevice("8:17", "devices/pci0000:00/0000:00:14.0/usb2/2-1/block/sdb/sdb1");
    std::filesystem::create_directories(tree.path(mapped + "/slaves"));
    EXPECT_EQ(device(253, 0), unknown);
    tree.symlink(mapped + "/slaves/dm-0", tree.path(mapped));
    EXPECT_EQ(device(253, 0), unknown);
    tree.symlink(mapped + "/slaves/sda1", tree.path("dev/block/8:1"));
    EXPECT_EQ(device(253, 0), builtIn);
    tree.symlink(mapped + "/slaves/sdb1", tree.path("dev/block/8:17"));
    EXPECT_EQ(device(253, 0), attachedByCable);
}

// These devices stand for disks.
const std::uint64_t null = makedev(1, 3);
const std::uint64_t zero = makedev(1, 5);

using DiskLinksTest = tests::FolderTest;

TEST_F(DiskLinksTest, findsTheNameOfEachDeviceAlsoBehindOtherLinks) {
    const tests::TemporaryFolder other;
    folder.symlink("one", other.symlink("link to a disk", "/dev/null"));
    folder.symlink("My\\x20Disk", "/dev/zero");
    EXPECT_THAT(diskLinksIn(folder.path()), UnorderedElementsAre(Pair(null, "one"), Pair(zero, "My Disk")));
}

TEST_F(DiskLinksTest, takesTheFirstOfSeveralNames) {
    for (const auto* name : {"c", "a", "b"}) {
        folder.symlink(name, "/dev/null");
    }
    EXPECT_EQ(diskLinksIn(folder.path()).at(null), "a");
}

TEST_F(DiskLinksTest, leavesOutWhatLeadsToNoDevice) {
    folder.symlink("dangling", "nothing");
    folder.symlink("loop", "loop");
    folder.folder("folder");
    for (const auto& path : {folder.path(), folder.path("none"), folder.file("file")}) {
        EXPECT_TRUE(diskLinksIn(path).empty()) << path;
    }
}

TEST_F(DiskLinksTest, undoTheEscapesOfNames) {
    EXPECT_EQ(undoneDiskLinkEscapes("My\\x20Disk\\x2fa"), "My Disk/a");
    EXPECT_EQ(undoneDiskLinkEscapes("\\x5cx20"), "\\x20");
    EXPECT_EQ(undoneDiskLinkEscapes("\\xc3\\xA9\xff"), "\u00e9\xff");
    EXPECT_EQ(undoneDiskLinkEscapes(""), "");
    for (const std::string name :
         {"\\", "\\x", "\\x2", "\\xg0", "\\x2g", "\\X20", "a\\x", "\\x-1", "\\x+1"}) {
        EXPECT_EQ(undoneDiskLinkEscapes(name), name);
    }
}

} // namespace
} // namespace tolvane::platform
