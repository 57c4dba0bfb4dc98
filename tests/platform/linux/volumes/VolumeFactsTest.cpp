#include "platform/linux/volumes/VolumeFacts.h"

#include "platform/linux/files/ItemStatus.h"
#include "platform/linux/volumes/CurrentMounts.h"
#include "platform/linux/volumes/VolumeUUID.h"
#include "tests/support/Mounting.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/statvfs.h>

namespace tolvane::platform {
namespace {

using namespace volume_flag;
using Table = std::shared_ptr<const MountTable>;

constexpr std::string_view uuid = "0fedcba9-8765-4321-8123-456789abcdef";
constexpr std::string_view uuidInCapitals = "0FEDCBA9-8765-4321-8123-456789ABCDEF";

Table tableOf(std::string_view mountinfo) {
    return std::make_shared<const MountTable>(MountTable::parse(mountinfo));
}

/// Invented disks; /dev/null stands for one.
class VolumeFactsFromAfar : public testing::Test {
protected:
    VolumeFactsFromAfar() {
        std::filesystem::create_directories(folder.path("disk/by-uuid"));
        std::filesystem::create_directories(folder.path("disk/by-label"));
        std::filesystem::create_directories(folder.path("block"));
    }

    VolumeFacts facts() const { return VolumeFacts({folder.path("disk"), folder.path("block")}); }

    BookmarkVolume volume(std::string_view mountinfo, std::uint64_t id = 1) const {
        const auto table = tableOf(mountinfo);
        return facts().fromAfar(table, *table->withID(id));
    }

    std::uint64_t flags(std::string_view mountinfo, std::uint64_t id = 1) const {
        return volume(mountinfo, id).flags.value().values;
    }

    const tests::TemporaryFolder folder;
};

TEST_F(VolumeFactsFromAfar, nameTheVolumeByItsLabel) {
    folder.symlink("disk/by-uuid/" + std::string(uuid), "/dev/null");
    folder.symlink("disk/by-label/My\\x20Disk", "/dev/null");
    const auto found = volume("1 0 1:3 / /media/My\\040Disk rw - ext4 /dev/sda1 rw\n");
    EXPECT_EQ(found.path, "/media/My Disk");
    EXPECT_EQ(found.url, "file:///media/My%20Disk/");
    EXPECT_EQ(found.name, "My Disk");
    EXPECT_EQ(found.uuid, uuidInCapitals);
    EXPECT_EQ(found.capacity, std::nullopt);
    EXPECT_EQ(found.creationDate, std::nullopt);
    EXPECT_EQ(found.mountURL, std::nullopt);
    EXPECT_FALSE(found.wasBoot);
}

TEST_F(VolumeFactsFromAfar, reportTheVolumeAtTheRoot) {
    const auto found = volume("1 0 8:1 / / rw - ext4 /dev/sda1 rw\n");
    EXPECT_EQ(found.path, "/");
    EXPECT_EQ(found.url, "file:///");
    EXPECT_EQ(found.name, "sda1");
    EXPECT_EQ(found.uuid, std::nullopt);
    EXPECT_TRUE(found.wasBoot);
}

TEST_F(VolumeFactsFromAfar, nameAVolumeWithoutALabelByWhatIsMounted) {
    EXPECT_EQ(volume("1 0 0:9 / /mnt/a rw - nfs4 server:/srv/export rw\n").name, "export");
    EXPECT_EQ(volume("1 0 0:9 / /mnt/a rw - cifs //server/share/ rw\n").name, "share");
    EXPECT_EQ(volume("1 0 0:9 / /mnt/a rw - fuse.sshfs demo@host: rw\n").name, "demo@host:");
    EXPECT_EQ(volume("1 0 0:9 / /dev/shm rw - tmpfs tmpfs rw\n").name, "tmpfs");
    EXPECT_EQ(volume("1 0 0:9 / /mnt/a rw - tmpfs none rw\n").name, "a");
    EXPECT_EQ(volume("1 0 0:9 / / rw - overlay  rw\n").name, "overlay");
    EXPECT_EQ(volume("1 0 0:9 / /mnt/a rw - nfs server:/ rw\n").name, "server:");
}

TEST_F(VolumeFactsFromAfar, areAlwaysText) {
    folder.symlink("disk/by-label/\\xff\xfe", "/dev/null");
    const auto found = volume("1 0 1:3 / /mnt/\xff rw - ext4 /dev/sda1 rw\n");
    EXPECT_EQ(found.name, "\uFFFD\uFFFD");
    EXPECT_EQ(found.path, "/mnt/\uFFFD");
    EXPECT_EQ(found.url, "file:///mnt/%FF/");
}

TEST_F(VolumeFactsFromAfar, takeNoSerialNumberForAUUIDAndNoMemoryForADisk) {
    folder.symlink("disk/by-uuid/1234-ABCD", "/dev/null");
    EXPECT_EQ(volume("1 0 1:3 / /mnt/a rw - vfat /dev/sda1 rw\n").uuid, std::nullopt);
    folder.symlink("disk/by-uuid/" + std::string(uuid), "/dev/null");
    EXPECT_EQ(volume("1 0 0:3 / /mnt/a rw - tmpfs tmpfs rw\n").uuid, std::nullopt);
}

TEST_F(VolumeFactsFromAfar, reportFlagsOfThePlainMask) {
    const auto found = volume("1 0 8:1 / / rw - ext4 /dev/sda1 rw\n").flags;
    ASSERT_TRUE(found);
    EXPECT_EQ(found->valid, 0x1'0000'13EFU);
    EXPECT_EQ(found->requested, 0U);
    EXPECT_EQ(found->values, local | persistentIDs);
}

TEST_F(VolumeFactsFromAfar, reportHowTheDiskIsAttached) {
    std::filesystem::create_directories(folder.path("devices/usb1/block/sdb/sdb1"));
    folder.file("devices/usb1/block/sdb/removable", "1\n");
    folder.symlink("block/8:17", "../devices/usb1/block/sdb/sdb1");
    std::filesystem::create_directories(folder.path("devices/ata1/block/sda"));
    folder.symlink("block/8:0", "../devices/ata1/block/sda");
    std::filesystem::create_directories(folder.path("devices/virtual/block/loop0"));
    folder.symlink("block/7:0", "../devices/virtual/block/loop0");
    EXPECT_EQ(
        flags("1 0 8:17 / /media/a rw - exfat /dev/sdb1 rw\n"), local | ejectable | removable | external);
    EXPECT_EQ(flags("1 0 8:0 / / rw - ext4 /dev/sda rw\n"), local | internal | persistentIDs);
    EXPECT_EQ(
        flags("1 0 7:0 / /media/a ro - iso9660 /dev/loop0 ro\n"),
        local | readOnly | ejectable | removable | diskImage | persistentIDs);
}

TEST_F(VolumeFactsFromAfar, reportNetworkVolumesAndThoseMountedByThemselves) {
    EXPECT_EQ(flags("1 0 0:9 / /mnt/a rw - nfs4 server:/export rw\n"), 0U);
    constexpr std::string_view automatic = "1 0 0:8 / /media/net rw - autofs /etc/auto.net rw\n"
                                           "2 1 0:9 / /media/net/a rw - nfs4 server:/export rw\n"
                                           "3 2 0:10 / /media/net/a/b rw - nfs4 server:/export/b rw\n";
    EXPECT_EQ(flags(automatic, 1), local | automounted | notBrowsable);
    EXPECT_EQ(flags(automatic, 2), automounted);
    EXPECT_EQ(flags(automatic, 3), 0U);
}

TEST_F(VolumeFactsFromAfar, reportWhatFileManagersDoNotShow) {
    const auto isShown = [this](const std::string& place, const std::string& type) {
        return (flags("1 0 0:9 / " + place + " rw - " + type + " x rw\n") & notBrowsable) == 0;
    };
    for (const auto* place :
         {"/", "/media/a", "/media/demo/a", "/mnt", "/mnt/a", "/run/media/demo/a", "/Volumes/a",
          "/home/demo/remote"}) {
        EXPECT_TRUE(isShown(place, "ext4")) << place;
    }
    for (const auto* place :
         {"/boot/efi", "/home", "/usr", "/var", "/mnta", "/run/media", "/home/demo/.cache/a",
          "/media/.hidden/a", "/dev/shm", "/tmp"}) {
        EXPECT_FALSE(isShown(place, "ext4")) << place;
    }
    EXPECT_FALSE(isShown("/mnt/a", "proc"));
}

TEST_F(VolumeFactsFromAfar, stayTheSameForOneTableAndAreTakenAnewForTheNext) {
    constexpr std::string_view mountinfo = "1 0 1:3 / /mnt/a rw - ext4 /dev/sda1 rw\n";
    auto source = facts();
    const auto table = tableOf(mountinfo);
    EXPECT_EQ(source.fromAfar(table, *table->withID(1)).name, "sda1");
    folder.symlink("disk/by-label/later", "/dev/null");
    EXPECT_EQ(source.fromAfar(table, *table->withID(1)).name, "sda1");
    const auto next = tableOf(mountinfo);
    EXPECT_EQ(source.fromAfar(next, *next->withID(1)).name, "later");
}

TEST(VolumeFacts, areThoseOfTheSystem) {
    CurrentMounts mounts;
    VolumeFacts facts;
    const auto table = mounts.table();
    ASSERT_TRUE(table);
    for (const auto* path : {"/", "/dev/shm"}) {
        const Mount* const mount = (*table)->topmostAt(path);
        if (mount == nullptr) {
            continue; // not a mount point in every container
        }
        const auto volume = facts.whole(*table, *mount);
        struct statvfs system{};
        ASSERT_EQ(statvfs(path, &system), 0);
        EXPECT_EQ(volume.capacity, static_cast<std::int64_t>(system.f_blocks * system.f_frsize)) << path;
        EXPECT_EQ(volume.creationDate, statusOfItem(path)->creationDate) << path;
        EXPECT_EQ(volume.path, path);
        EXPECT_EQ((volume.flags->values & readOnly) != 0, (system.f_flag & ST_RDONLY) != 0) << path;
        const auto afar = facts.fromAfar(*table, *mount);
        EXPECT_EQ(volume.uuid, afar.uuid ? afar.uuid : uuidOfMountedVolume(*mount)) << path;
    }
}

// An invented mount at a real folder is taken for covered by the one that is there.
TEST(VolumeFacts, ofACoveredMountAndOfAnAutomounterAreThoseFromAfar) {
    const auto root = statusOfItem("/").value();
    if (!root.mountID) {
        GTEST_SKIP() << "this kernel has no mount numbers";
    }
    for (const auto& mountinfo :
         {std::string("123456789 0 0:9 / / rw - ext4 /dev/sda1 rw\n"),
          std::to_string(*root.mountID) + " 0 0:9 / / rw - autofs /etc/auto.master rw\n"}) {
        const auto table = tableOf(mountinfo);
        VolumeFacts facts;
        const Mount& mount = table->mounts().front();
        EXPECT_EQ(facts.whole(table, mount), facts.fromAfar(table, mount)) << mountinfo;
    }
}

TEST(VolumeFacts, seeThatAVolumeCannotBeWrittenAnyMore) {
    const tests::TemporaryFolder folder;
    const auto place = std::filesystem::canonical(folder.folder("place")).string();
    tests::expectWithMounts([&] {
        if (!tests::mountMemory(place)) {
            return false;
        }
        CurrentMounts mounts;
        VolumeFacts facts;
        const auto flags = [&] {
            const Table table = mounts.table().value();
            const Mount* const mounted = table->topmostAt(place);
            return mounted == nullptr ? 0 : facts.whole(table, *mounted).flags->values;
        };
        EXPECT_EQ(flags() & (readOnly | persistentIDs), persistentIDs);
        if (mount(nullptr, place.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, "size=64k") != 0) {
            return false;
        }
        EXPECT_EQ(flags() & readOnly, readOnly);
        return true;
    });
}

} // namespace
} // namespace tolvane::platform
