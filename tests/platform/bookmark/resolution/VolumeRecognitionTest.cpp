#include "platform/bookmark/resolution/VolumeRecognition.h"

#include "tests/platform/bookmark/resolution/PretendVolumes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::platform {
namespace {

constexpr const char* uuidA = "AAAAAAAA-0000-0000-0000-000000000001";
constexpr const char* uuidB = "BBBBBBBB-0000-0000-0000-000000000002";

class VolumeRecognition : public testing::Test {
protected:
    VolumeRecognition() {
        auto& root = mounted.mount("/", 10);
        root.volume.name = "System";
        root.uuid = uuidA;
        root.capacity = 1'000;
        stored.path = "/media/stick";
    }

    tests::PretendVolumes::Facts& mountStick(const std::string& mountPoint, std::uint64_t device) {
        auto& stick = mounted.mount(mountPoint, device);
        stick.volume.name = "Stick";
        stick.uuid = uuidB;
        stick.capacity = 500;
        return stick;
    }

    void storeNameAndCapacity() {
        stored.name = "Stick";
        stored.capacity = 500;
    }

    VolumeMatch match() const { return recognisedVolumes(stored, mounted).match; }

    std::vector<std::string> mountPoints() const {
        std::vector<std::string> points;
        for (const MountedVolume& volume : recognisedVolumes(stored, mounted).volumes) {
            points.push_back(volume.mountPoint);
        }
        return points;
    }

    using Points = std::vector<std::string>;

    tests::PretendVolumes mounted;
    BookmarkVolume stored;
};

TEST_F(VolumeRecognition, matchesTheUUIDWhereverTheVolumeIsMounted) {
    mountStick("/mnt/elsewhere", 20);
    stored.uuid = uuidB;
    EXPECT_EQ(match(), VolumeMatch::uuid);
    EXPECT_EQ(mountPoints(), Points{"/mnt/elsewhere"});
}

TEST_F(VolumeRecognition, matchesNothingByAUUIDThatNoVolumeHas) {
    mountStick("/media/stick", 20);
    stored.uuid = "CCCCCCCC-0000-0000-0000-000000000003";
    EXPECT_EQ(match(), VolumeMatch::uuid);
    EXPECT_EQ(mountPoints(), Points());
}

TEST_F(VolumeRecognition, ignoresTheCaseOfAUUID) {
    mountStick("/mnt/elsewhere", 20);
    stored.uuid = "bbbbbbbb-0000-0000-0000-000000000002";
    EXPECT_EQ(mountPoints(), Points{"/mnt/elsewhere"});
}

TEST_F(VolumeRecognition, prefersThePlaceOfThenAndThenTheWholeVolume) {
    mountStick("/srv/part", 20).volume.isWhole = false;
    mountStick("/mnt/whole", 20);
    mountStick("/media/stick", 20).volume.isWhole = false;
    stored.uuid = uuidB;
    EXPECT_EQ(mountPoints(), (Points{"/media/stick", "/mnt/whole", "/srv/part"}));
}

TEST_F(VolumeRecognition, asksNoOtherWhenTheOneAtThePlaceOfThenIsIt) {
    mountStick("/media/stick", 20);
    mountStick("/mnt/again", 20);
    stored.uuid = uuidB;
    EXPECT_EQ(mountPoints(), (Points{"/media/stick", "/mnt/again"}));
    EXPECT_EQ(mounted.askedForUUID, Points{"/media/stick"});
}

TEST_F(VolumeRecognition, matchesNameAndCapacityWithoutAUUID) {
    mountStick("/mnt/elsewhere", 20);
    storeNameAndCapacity();
    EXPECT_EQ(match(), VolumeMatch::nameAndCapacity);
    EXPECT_EQ(mountPoints(), Points{"/mnt/elsewhere"});
    stored.capacity = 501;
    EXPECT_EQ(mountPoints(), Points());
    stored.capacity = 500;
    stored.name = "Other";
    EXPECT_EQ(mountPoints(), Points());
}

TEST_F(VolumeRecognition, matchesNameAndCapacityWhereNoUUIDIsKnownHere) {
    mountStick("/mnt/elsewhere", 20).uuid.reset();
    storeNameAndCapacity();
    stored.uuid = uuidB;
    EXPECT_EQ(match(), VolumeMatch::nameAndCapacity);
    EXPECT_EQ(mountPoints(), Points{"/mnt/elsewhere"});
}

TEST_F(VolumeRecognition, doesNotMatchATwinWithAnotherUUID) {
    mountStick("/media/stick", 20);
    storeNameAndCapacity();
    for (const char* other : {"CCCCCCCC-0000-0000-0000-000000000003", "1234-ABCD"}) {
        stored.uuid = other;
        EXPECT_EQ(mountPoints(), Points()) << other;
    }
    EXPECT_NE(match(), VolumeMatch::notNamed);
}

TEST_F(VolumeRecognition, doesNotDistinguishCopiesWithOneUUIDByTheirNames) {
    mountStick("/mnt/a", 20);
    mountStick("/mnt/b", 21).volume.name = "Copy";
    stored.uuid = uuidB;
    storeNameAndCapacity();
    EXPECT_EQ(match(), VolumeMatch::uuid);
    EXPECT_EQ(mountPoints(), Points());
}

TEST_F(VolumeRecognition, choosesBetweenDevicesByThePlaceOfThenAlone) {
    mountStick("/mnt/a", 20);
    mountStick("/mnt/b", 21);
    stored.uuid = uuidB;
    EXPECT_EQ(mountPoints(), Points());
    mountStick("/media/stick", 22);
    EXPECT_EQ(mountPoints(), Points{"/media/stick"});
    stored.uuid.reset();
    storeNameAndCapacity();
    EXPECT_EQ(mountPoints(), Points{"/media/stick"});
}

TEST_F(VolumeRecognition, matchesVolumesWithoutCapacityByTheirNames) {
    mountStick("/media/stick", 20).capacity.reset();
    stored.name = "Stick";
    EXPECT_EQ(match(), VolumeMatch::nameAndCapacity);
    EXPECT_EQ(mountPoints(), Points{"/media/stick"});
    stored.capacity = 500;
    EXPECT_EQ(mountPoints(), Points());
}

TEST_F(VolumeRecognition, doesNotMatchANameAlone) {
    mountStick("/media/stick", 20);
    stored.name = "Stick";
    EXPECT_NE(match(), VolumeMatch::notNamed);
    EXPECT_EQ(mountPoints(), Points());
}

TEST_F(VolumeRecognition, matchesNothingWithoutUUIDAndName) {
    stored.capacity = 1'000;
    EXPECT_EQ(match(), VolumeMatch::notNamed);
    EXPECT_EQ(mountPoints(), Points());
    EXPECT_TRUE(mounted.askedForUUID.empty());
}

} // namespace
} // namespace tolvane::platform
