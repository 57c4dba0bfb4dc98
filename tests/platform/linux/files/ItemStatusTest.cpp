#include "platform/linux/files/ItemStatus.h"

#include "tests/platform/linux/FolderTest.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <utility>
#include <vector>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace tolvane::platform {
namespace {

using ItemStatusTest = tests::FolderTest;

TEST_F(ItemStatusTest, countsDevicesAsStatDoes) {
    EXPECT_EQ(deviceNumber(8, 1), makedev(8, 1));
    EXPECT_EQ(deviceNumber(8, 1), 0x801U);
    EXPECT_EQ(deviceNumber(0, 0), 0U);
    const auto device = deviceNumber(0x1234'5678, 0x9ABC'DEF0);
    EXPECT_EQ(device, 0x1234'59AB'CDE6'78F0U);
    EXPECT_EQ(major(device), 0x1234'5678U);
    EXPECT_EQ(minor(device), 0x9ABC'DEF0U);
}

TEST_F(ItemStatusTest, takesTheKindFromTheModeWhateverThePermissions) {
    const std::vector<std::pair<std::uint32_t, ItemKind>> kinds{
        {S_IFREG, ItemKind::regularFile}, {S_IFDIR, ItemKind::folder},  {S_IFLNK, ItemKind::symbolicLink},
        {S_IFIFO, ItemKind::fifo},        {S_IFSOCK, ItemKind::socket}, {S_IFCHR, ItemKind::characterDevice},
        {S_IFBLK, ItemKind::blockDevice}, {0, ItemKind::unknown}};
    for (const auto& [mode, kind] : kinds) {
        EXPECT_EQ(kindOfMode(mode), kind) << mode;
        EXPECT_EQ(kindOfMode(mode | 07777U), kind) << mode;
    }
}

TEST_F(ItemStatusTest, agreesWithStat) {
    for (const auto& path :
         {folder.path(), folder.file("a", "abc"), folder.symlink("link", "a"), std::string("/dev/null"),
          std::string("/proc/self/stat"), std::string("/")}) {
        const auto expected = tests::statusOf(path);
        const auto status = statusOfItem(path);
        ASSERT_TRUE(status) << path;
        EXPECT_EQ(status->mode, expected.st_mode) << path;
        EXPECT_EQ(status->size, static_cast<std::uint64_t>(expected.st_size)) << path;
        EXPECT_EQ(status->fileNumber, expected.st_ino) << path;
        EXPECT_EQ(status->device, expected.st_dev) << path;
        EXPECT_EQ(status->ownerID, expected.st_uid) << path;
        EXPECT_EQ(status->groupID, expected.st_gid) << path;
        EXPECT_EQ(status->linkCount, expected.st_nlink) << path;
    }
}

TEST_F(ItemStatusTest, distinguishesMountRootsFromOtherFolders) {
    const auto isRoot = statusOfItem(folder.path()).value().isMountRoot;
    if (!isRoot) {
        GTEST_SKIP() << "this kernel does not report mount roots";
    }
    EXPECT_FALSE(*isRoot);
    EXPECT_EQ(statusOfItem("/proc").value().isMountRoot, true);
}

TEST_F(ItemStatusTest, believesTheKernelAboutMountRootsOrComparesWithTheParent) {
    auto status = statusOfItem(folder.path()).value();
    status.isMountRoot = true;
    EXPECT_TRUE(isMountRoot(folder.path(), status));
    status.isMountRoot = false;
    EXPECT_FALSE(isMountRoot("/", status));
    const auto isMountRootByParent = [](const std::string& path) {
        auto unknown = statusOfItem(path).value();
        unknown.isMountRoot.reset();
        return isMountRoot(path, unknown);
    };
    EXPECT_TRUE(isMountRootByParent("/"));
    EXPECT_FALSE(isMountRootByParent(folder.path()));
    EXPECT_FALSE(isMountRootByParent(folder.folder("a") + "/"));
    EXPECT_EQ(isMountRootByParent("/proc"), statusOfItem("/proc")->device != statusOfItem("/")->device);
}

TEST_F(ItemStatusTest, failsAsTheSystemSaysAndRefusesAPathWithNulInsteadOfCuttingIt) {
    const std::vector<std::pair<std::string, int>> failures{
        {"", ENOENT},
        {folder.path("none"), ENOENT},
        {folder.file("a") + "/b", ENOTDIR},
        {folder.symlink("loop", "loop") + "/", ELOOP},
        {folder.path(std::string(256, 'n')), ENAMETOOLONG},
        {"/" + std::string(5000, '/'), ENAMETOOLONG},
        {folder.path("a") + std::string("\0b", 2), EINVAL}};
    for (const auto& [path, code] : failures) {
        EXPECT_EQ(statusOfItem(path).error().code, code) << path;
    }
}

} // namespace
} // namespace tolvane::platform
