#include "platform/linux/volumes/BlockDevice.h"
#include "tests/platform/linux/FolderTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/sysmacros.h>

namespace tolvane::platform {
namespace {

using testing::Pair;
using testing::UnorderedElementsAre;

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
    folder.file("file");
    folder.folder("folder");
    EXPECT_TRUE(diskLinksIn(folder.path()).empty());
}

TEST_F(DiskLinksTest, areNoneWithoutAFolder) {
    EXPECT_TRUE(diskLinksIn(folder.path("none")).empty());
    EXPECT_TRUE(diskLinksIn(folder.file("file")).empty());
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
