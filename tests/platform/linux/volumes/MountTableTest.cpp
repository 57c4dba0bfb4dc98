#include "platform/linux/volumes/MountTable.h"

#include "platform/linux/files/ItemStatus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Steps = std::vector<std::pair<std::size_t, std::uint64_t>>;

// With disks, an automounted share, and one mount over another.
constexpr std::string_view desktop =
    "22 28 0:21 / /proc rw,nosuid shared:12 - proc proc rw\n"
    "28 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw,errors=remount-ro\n"
    "40 28 8:3 / /home rw,relatime shared:21 - xfs /dev/sda3 rw,attr2\n"
    "41 28 8:17 / /media/demo/My\\040Stick rw,nosuid shared:22 - vfat /dev/sdb1 rw,utf8\n"
    "42 28 0:50 / /net rw shared:23 master:7 - autofs /etc/auto.net rw,fd=6\n"
    "43 42 0:51 / /net/server rw shared:24 - nfs4 server:/export rw,vers=4.2\n"
    "44 40 0:52 / /home/demo/remote rw - fuse.sshfs demo@host: rw,user_id=1000\n"
    "45 28 8:33 / /mnt ro,relatime - ext4 /dev/sdc1 rw\n"
    "46 45 8:34 / /mnt rw,relatime - ext4 /dev/sdc2 ro\n"
    "47 45 8:35 / /mnt/covered rw - ext4 /dev/sdc3 rw\n";

// The depth and number of each mount on the way.
Steps stepsTo(const MountTable& table, std::string_view path) {
    Steps steps;
    for (const auto& step : table.onTheWayTo(path)) {
        steps.emplace_back(step.depth, step.mount->id);
    }
    return steps;
}

TEST(MountTable, reportsTheFactsOfEachMount) {
    const auto table = MountTable::parse(desktop);
    ASSERT_EQ(table.mounts().size(), 10U);
    const Mount expected{41,     28,          deviceNumber(8, 17), "/",  "/media/demo/My Stick",
                         "vfat", "/dev/sdb1", "rw,utf8",           false};
    EXPECT_EQ(table.mounts()[3], expected);
    EXPECT_EQ(table.mounts()[5].source, "server:/export");
    EXPECT_EQ(table.mounts()[6].type, "fuse.sshfs");
}

TEST(MountTable, undoesTheKernelsEscapesAndKeepsEveryOtherByte) {
    const auto table =
        MountTable::parse("1 0 8:1 /a\\011b /c\\012d\\134040e\xff\\303\\251 rw - ext4 /dev/disk\\040one rw\n"
                          "2 1 8:1 / /a\\b\\09\\400\\04 rw - ext4 x rw\n");
    ASSERT_EQ(table.mounts().size(), 2U);
    EXPECT_EQ(table.mounts()[0].root, "/a\tb");
    EXPECT_EQ(table.mounts()[0].mountPoint, "/c\nd\\040e\xff\u00e9");
    EXPECT_EQ(table.mounts()[0].source, "/dev/disk one");
    EXPECT_EQ(table.mounts()[1].mountPoint, "/a\\b\\09\\400\\04") << "no escapes";
}

TEST(MountTable, countsAMountAsReadOnlyByItsOwnOptionsOrByThoseOfItsFileSystem) {
    const auto table = MountTable::parse(desktop);
    EXPECT_TRUE(table.withID(45)->isReadOnly);
    EXPECT_TRUE(table.withID(46)->isReadOnly);
    EXPECT_FALSE(table.withID(28)->isReadOnly) << "errors=remount-ro is another option";
}

TEST(MountTable, readsASourceThatIsEmpty) {
    const auto table = MountTable::parse("1 0 0:7 / /run rw - tmpfs  rw,size=1k\n");
    ASSERT_EQ(table.mounts().size(), 1U);
    EXPECT_EQ(table.mounts()[0].source, "");
    EXPECT_EQ(table.mounts()[0].superOptions, "rw,size=1k");
}

TEST(MountTable, leavesOutWhatIsNoMount) {
    for (const std::string line :
         {"", "\n", "word", "1 0 8:1 / / rw", "1 0 8:1 / / rw shared:1", "x 0 8:1 / / rw - ext4 a rw",
          "1 x 8:1 / / rw - ext4 a rw", "1 0 81 / / rw - ext4 a rw", "1 0 8: / / rw - ext4 a rw",
          "1 0 8:1 / relative rw - ext4 a rw", "-1 0 8:1 / / rw - ext4 a rw",
          "1 0 99999999999:1 / / rw - ext4 a rw", "1 0 8:1 / / rw - "}) {
        EXPECT_THAT(MountTable::parse(line).mounts(), IsEmpty()) << line;
    }
    EXPECT_EQ(MountTable::parse("word\n1 0 8:1 / / rw - ext4 a rw").mounts().size(), 1U);
}

TEST(MountTable, findsMountsByTheirNumbersAndTheTopmostAtAMountPoint) {
    const auto table = MountTable::parse(desktop);
    EXPECT_EQ(table.withID(43)->mountPoint, "/net/server");
    EXPECT_EQ(table.withID(99), nullptr);
    EXPECT_EQ(table.topmostAt("/mnt")->id, 46U);
    EXPECT_EQ(table.topmostAt("/")->id, 28U);
    EXPECT_EQ(table.topmostAt("/home/demo"), nullptr);
    EXPECT_EQ(table.topmostAt("/mnt/covered"), nullptr) << "what lies below a covered mount is out of reach";
}

TEST(MountTable, goesByWhatAMountStandsOnAndNotByTheOrderOfTheList) {
    const auto table = MountTable::parse("3 2 8:3 / /a rw - ext4 c rw\n"
                                         "2 1 8:2 / /a rw - ext4 b rw\n"
                                         "1 0 8:1 / / rw - ext4 a rw\n");
    EXPECT_EQ(table.topmostAt("/a")->id, 3U);
}

TEST(MountTable, reportsTheMountsOnTheWayToAPath) {
    const auto table = MountTable::parse(desktop);
    EXPECT_EQ(stepsTo(table, "/"), (Steps{{0, 28}}));
    EXPECT_EQ(stepsTo(table, "/etc/passwd"), (Steps{{0, 28}}));
    EXPECT_EQ(stepsTo(table, "/homes/a"), (Steps{{0, 28}})) << "a longer name is another folder";
    EXPECT_EQ(stepsTo(table, "/home/demo/remote/a/b"), (Steps{{0, 28}, {1, 40}, {3, 44}}));
    EXPECT_EQ(stepsTo(table, "/net/server/f"), (Steps{{0, 28}, {1, 42}, {2, 43}}));
    EXPECT_EQ(stepsTo(table, "/mnt/covered/f"), (Steps{{0, 28}, {1, 46}}));
    EXPECT_EQ(stepsTo(table, "/media/demo/My Stick"), (Steps{{0, 28}, {3, 41}}));
}

TEST(MountTable, reportsWhatCanBeReached) {
    std::vector<std::uint64_t> ids;
    const auto table = MountTable::parse(desktop);
    for (const Mount* mount : table.reachable()) {
        ids.push_back(mount->id);
    }
    EXPECT_THAT(ids, ElementsAre(22, 28, 40, 41, 42, 43, 44, 46));
}

// After chroot into a folder that is no mount point, the mount below it is not listed.
TEST(MountTable, standsOnNothingWhereTheRootIsNoMountPoint) {
    const auto table = MountTable::parse("42 27 0:39 / /proc rw - proc proc rw\n"
                                         "43 27 0:6 / /dev rw - devtmpfs devtmpfs rw\n"
                                         "44 43 0:23 / /dev/shm rw - tmpfs tmpfs rw\n");
    EXPECT_THAT(stepsTo(table, "/etc/passwd"), IsEmpty());
    EXPECT_EQ(stepsTo(table, "/dev/shm/a"), (Steps{{1, 43}, {2, 44}}));
    EXPECT_EQ(table.topmostAt("/"), nullptr);
}

TEST(MountTable, comesToAnEndWithMountsThatStandOnEachOther) {
    const auto table = MountTable::parse("1 1 8:1 / / rw - ext4 a rw\n"
                                         "2 3 8:2 / /a rw - ext4 b rw\n"
                                         "3 2 8:3 / /a rw - ext4 c rw\n"
                                         "4 1 8:4 / /b rw - ext4 d rw\n"
                                         "4 4 8:4 / /b rw - ext4 d rw\n");
    EXPECT_EQ(table.topmostAt("/")->id, 1U);
    EXPECT_EQ(table.topmostAt("/a"), nullptr);
    EXPECT_EQ(table.topmostAt("/b")->id, 4U);
}

TEST(MountTable, canBeCopiedAndMoved) {
    auto table = MountTable::parse(desktop);
    const MountTable copy = table;
    const MountTable moved = std::move(table);
    EXPECT_EQ(copy.topmostAt("/home")->id, 40U);
    EXPECT_EQ(moved.topmostAt("/home")->id, 40U);
}

} // namespace
} // namespace tolvane::platform
