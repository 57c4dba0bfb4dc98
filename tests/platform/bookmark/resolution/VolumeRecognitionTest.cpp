#include "platform/bookmark/resolution/VolumeRecognition.h"

#include "tests/platform/bookmark/resolution/PretendVolumes.h"

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
        for (const MountedVolume* const volume : recognisedVolumes(stored, mounted).volumes) {
            points.push_back(volume->mountPoint);
        }
        return points;
    }

    using Points = std::vector<std::string>;

    tests::PretendVolumes mounted;
    BookmarkVolume stored;
};

TEST_F(VolumeRecognition, matchesTheUUIDInAnyCaseWhereverTheVolumeIsMounted) {
    mountStick("/mnt/elsewhere", 20);
    for (const char* const uuid : {uuidB, "bbbbbbbb-0000-0000-0000-000000000002"}) {
        stored.uuid = uuid;
        EXPECT_EQ(match(), VolumeMatch::uuid) << uuid;
        EXPECT_EQ(mountPoints(), Points{"/mnt/elsewhere"}) << uuid;
    }
}

TEST_F(VolumeRecognition, matchesNothingByAUUIDThatNoVolumeHas) {
    mountStick("/media/stick", 20);
    stored.uuid = "CCCCCCCC-0000-0000-0000-000000000003";
    EXPECT_EQ(match(), VolumeMatch::uuid);
    EXPECT_EQ(mountPoints(), Points());
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

TEST_F(VolumeRecognition, matchesNameAndCreationDateWhereNoCapacityIsStored) {
    mountStick("/mnt/elsewhere", 20).creationDate = Date(1'000.5);
    stored.name = "Stick";
    stored.creationDate = Date(1'000.0);
    EXPECT_EQ(match(), VolumeMatch::nameAndCreationDate);
    EXPECT_EQ(mountPoints(), Points{"/mnt/elsewhere"}) << "to the second";
    stored.creationDate = Date(1'001.0);
    EXPECT_EQ(mountPoints(), Points());
    stored.creationDate = Date(1'000.0);
    stored.name = "Other";
    EXPECT_EQ(mountPoints(), Points());
    stored.name = "Stick";
    stored.capacity = 1;
    EXPECT_EQ(mountPoints(), Points()) << "another capacity is another volume";
}

TEST_F(VolumeRecognition, matchesACreationDateInAnyZoneWhereItIsLocal) {
    auto& stick = mountStick("/mnt/elsewhere", 20);
    stored.name = "Stick";
    stored.localCreationDate = Date(0);
    EXPECT_EQ(mountPoints(), Points()) << "the volume keeps no date";
    stick.creationDate = Date(-14 * 3'600);
    EXPECT_EQ(mountPoints(), Points{"/mnt/elsewhere"});
    stick.creationDate = Date(14 * 3'600);
    EXPECT_EQ(mountPoints(), Points()) << "no zone is so far behind (LocalTimeTest)";
}

TEST_F(VolumeRecognition, matchesNoneOfSeveralVolumesWithNameAndCreationDate) {
    mountStick("/mnt/a", 20).creationDate = Date(1'000);
    mountStick("/mnt/b", 21).creationDate = Date(1'000);
    stored.name = "Stick";
    stored.creationDate = Date(1'000);
    EXPECT_EQ(mountPoints(), Points());
    stored.path = "/mnt/b";
    EXPECT_EQ(mountPoints(), Points{"/mnt/b"});
}

} // namespace
} // namespace tolvane::platform
