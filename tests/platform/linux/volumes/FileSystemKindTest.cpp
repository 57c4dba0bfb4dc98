#include "platform/linux/volumes/FileSystemKind.h"

#include <gtest/gtest.h>

namespace tolvane::platform {

TEST(FileSystemKind, distinguishesDisksFromTheNetwork) {
    for (const auto* type :
         {"ext4", "xfs", "btrfs", "vfat", "exfat", "tmpfs", "overlay", "fuseblk", "proc", "unknownfs"}) {
        EXPECT_TRUE(isLocalFileSystem(type)) << type;
    }
    for (const auto* type : {"nfs", "nfs4", "cifs", "smb3", "fuse.sshfs", "9p", "virtiofs", "afs", "ceph"}) {
        EXPECT_FALSE(isLocalFileSystem(type)) << type;
    }
}

TEST(FileSystemKind, knowsWhichKeepFileNumbers) {
    for (const auto* type : {"ext2", "ext3", "ext4", "xfs", "btrfs", "tmpfs", "overlay", "f2fs", "zfs"}) {
        EXPECT_TRUE(hasLastingFileNumbers(type)) << type;
    }
    for (const auto* type :
         {"vfat", "msdos", "exfat", "nfs", "nfs4", "cifs", "smb3", "9p", "fuse", "fuse.sshfs", "proc",
          "unknownfs", ""}) {
        EXPECT_FALSE(hasLastingFileNumbers(type)) << type;
    }
}

TEST(FileSystemKind, isKnownByTheNumberOfTheSystem) {
    EXPECT_EQ(fileSystemTypeOfMagic(0xEF53), "ext4");
    EXPECT_EQ(fileSystemTypeOfMagic(0x0102'1994), "tmpfs");
    EXPECT_EQ(fileSystemTypeOfMagic(0x9123'683E), "btrfs");
    EXPECT_EQ(fileSystemTypeOfMagic(1), "");
}

TEST(FileSystemKind, knowsTheKernelsViewsOfItself) {
    for (const auto* type : {"proc", "sysfs", "cgroup2", "devpts", "devtmpfs", "autofs", "securityfs"}) {
        EXPECT_TRUE(isPseudoFileSystem(type)) << type;
    }
    for (const auto* type : {"ext4", "tmpfs", "nfs4", "vfat", "unknownfs"}) {
        EXPECT_FALSE(isPseudoFileSystem(type)) << type;
    }
    EXPECT_TRUE(isAutomounter("autofs"));
    EXPECT_FALSE(isAutomounter("nfs4"));
}

} // namespace tolvane::platform
