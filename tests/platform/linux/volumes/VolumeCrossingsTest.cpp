#include "platform/linux/volumes/VolumeCrossings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

namespace tolvane::platform {
namespace {

using testing::ElementsAre;
using testing::Pair;
using Steps = std::vector<std::pair<std::size_t, std::uint64_t>>;

constexpr std::string_view fourVolumes = "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"
                                         "2 1 8:2 / /home rw - ext4 /dev/sda2 rw\n"
                                         "3 2 8:3 / /home/demo/stick rw - vfat /dev/sdb1 rw\n"
                                         "4 1 8:4 / /mnt rw - ext4 /dev/sdc1 rw\n";

// A path whose steps are on these mounts; 0 for a step with an unknown mount.
RealPath pathOn(std::vector<std::string> components, const std::vector<std::uint64_t>& mounts) {
    RealPath path{std::move(components), {}};
    for (const std::uint64_t id : mounts) {
        ItemStatus status;
        status.mountID = id != 0 ? std::optional(id) : std::nullopt;
        path.items.push_back(status);
    }
    return path;
}

Steps stepsOf(const RealPath& path, std::string_view mounts = fourVolumes) {
    Steps steps;
    for (const auto& crossing :
         volumeCrossings(path, MountTable::parse(mounts)).value_or(std::vector<VolumeCrossing>())) {
        steps.emplace_back(crossing.depth, crossing.mount.id);
    }
    return steps;
}

TEST(VolumeCrossings, beginAtTheRootAndReportEachVolumeOnTheWay) {
    EXPECT_THAT(stepsOf(pathOn({}, {1})), ElementsAre(Pair(0, 1)));
    EXPECT_THAT(stepsOf(pathOn({"etc", "passwd"}, {1, 1, 1})), ElementsAre(Pair(0, 1)));
    EXPECT_THAT(
        stepsOf(pathOn({"home", "demo", "stick", "a", "b"}, {1, 2, 2, 3, 3, 3})),
        ElementsAre(Pair(0, 1), Pair(1, 2), Pair(3, 3)));
    EXPECT_THAT(stepsOf(pathOn({"mnt"}, {1, 4})), ElementsAre(Pair(0, 1), Pair(1, 4)));
    EXPECT_THAT(
        stepsOf(pathOn({"home", "demo", "stick", "a"}, {0, 0, 0, 0, 0})),
        ElementsAre(Pair(0, 1), Pair(1, 2), Pair(3, 3)))
        << "by the mount points, since the mounts of the items are unknown";
}

TEST(VolumeCrossings, areUnknownWhereTheTableIsOfAnotherMoment) {
    const auto table = MountTable::parse(fourVolumes);
    EXPECT_FALSE(volumeCrossings(pathOn({"home"}, {1, 9}), table)) << "a mount that is not in the table";
    EXPECT_FALSE(volumeCrossings(pathOn({"media"}, {1, 4}), table)) << "a mount that is elsewhere";
    EXPECT_FALSE(volumeCrossings(pathOn({"home"}, {2, 2}), table)) << "a mount that is not at the root";
}

TEST(VolumeCrossings, reportARootThatIsNotInTheTable) {
    auto path = pathOn({"proc", "self"}, {7, 5, 5});
    path.items[0].device = 42;
    const auto crossings = volumeCrossings(path, MountTable::parse("5 7 0:22 / /proc rw - proc proc rw\n"));
    ASSERT_TRUE(crossings);
    ASSERT_EQ(crossings->size(), 2U);
    const Mount& root = crossings->front().mount;
    EXPECT_EQ(root.id, 7U);
    EXPECT_EQ(root.device, 42U);
    EXPECT_EQ(root.mountPoint, "/");
    EXPECT_EQ(crossings->back().mount.id, 5U);
    EXPECT_THAT(stepsOf(pathOn({"a"}, {0, 0}), ""), ElementsAre(Pair(0, 0)));
}

} // namespace
} // namespace tolvane::platform
