#include "platform/linux/volumes/BlockDevice.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/sysmacros.h>

namespace tolvane::platform {

namespace {

using tests::TemporaryFolder;

// Devices that every system has stand for disks: links are read by the number of what they lead to.
constexpr unsigned memoryDevices = 1;
const std::uint64_t null = makedev(memoryDevices, 3);
const std::uint64_t zero = makedev(memoryDevices, 5);

} // namespace

TEST(DiskLinks, findsTheNameOfEachDevice) {
    const TemporaryFolder folder;
    folder.symlink("one", "/dev/null");
    folder.symlink("two", "/dev/zero");
    const auto links = diskLinksIn(folder.path());
    ASSERT_EQ(links.size(), 2U);
    EXPECT_EQ(links.at(null), "one");
    EXPECT_EQ(links.at(zero), "two");
}

TEST(DiskLinks, takesTheFirstOfSeveralNames) {
    const TemporaryFolder folder;
    for (const auto* name : {"c", "a", "b"}) {
        folder.symlink(name, "/dev/null");
    }
    EXPECT_EQ(diskLinksIn(folder.path()).at(null), "a");
}

TEST(DiskLinks, followsLinksToLinks) {
    const TemporaryFolder folder;
    const TemporaryFolder other;
    folder.symlink("name", other.symlink("disk", "/dev/null"));
    EXPECT_EQ(diskLinksIn(folder.path()).at(null), "name");
}

TEST(DiskLinks, leavesOutWhatLeadsToNoDevice) {
    const TemporaryFolder folder;
    folder.symlink("dangling", "nothing");
    folder.symlink("loop", "loop");
    folder.file("file");
    folder.folder("folder");
    EXPECT_TRUE(diskLinksIn(folder.path()).empty());
}

TEST(DiskLinks, areNoneWithoutAFolder) {
    const TemporaryFolder folder;
    EXPECT_TRUE(diskLinksIn(folder.path("none")).empty());
    EXPECT_TRUE(diskLinksIn(folder.file("file")).empty());
}

TEST(DiskLinks, undoTheEscapesOfNames) {
    EXPECT_EQ(undoneDiskLinkEscapes("My\\x20Disk\\x2fa"), "My Disk/a");
    EXPECT_EQ(undoneDiskLinkEscapes("\\x5cx20"), "\\x20");
    EXPECT_EQ(undoneDiskLinkEscapes("\\xc3\\xA9\xff"), "\u00e9\xff");
    EXPECT_EQ(undoneDiskLinkEscapes(""), "");
}

TEST(DiskLinks, leaveAloneWhatIsNoEscape) {
    for (const std::string name :
         {"\\", "\\x", "\\x2", "\\xg0", "\\x2g", "\\X20", "a\\x", "\\x-1", "\\x+1"}) {
        EXPECT_EQ(undoneDiskLinkEscapes(name), name);
    }
}

TEST(DiskLinks, undoTheEscapesOfLinks) {
    const TemporaryFolder folder;
    folder.symlink("My\\x20Disk", "/dev/null");
    EXPECT_EQ(diskLinksIn(folder.path()).at(null), "My Disk");
}

} // namespace tolvane::platform
