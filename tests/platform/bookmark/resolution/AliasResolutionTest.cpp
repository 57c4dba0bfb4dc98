#include "platform/bookmark/resolution/BookmarkResolution.h"
#include "platform/values/Error.h"
#include "tests/platform/bookmark/resolution/PretendVolumes.h"
#include "tests/support/AliasRecords.h"

namespace tolvane::platform {
namespace {

class AliasResolution : public testing::Test {
protected:
    AliasResolution() {
        mounted.mount("/", 10).volume.name = "System";
        mounted.addFolder("/Volumes/Disk/folder", 20);
        mounted.addFile("/Volumes/Disk/folder/note.txt", 30, 0);
    }

    /// Mounts the volume of the alias, with its item.
    void mountDisk(const std::string& mountPoint) {
        auto& disk = mounted.mount(mountPoint, 11);
        disk.volume.name = "Disk";
        disk.capacity = 500;
        disk.creationDate = Date::fromUnixTime(917'155'200, 0); // As in the alias.
        mounted.addFolder(mountPoint + "/folder", 20);
        mounted.addFile(mountPoint + "/folder/note.txt", 30, 538'848'000); // Likewise.
    }

    std::string found() const {
        const auto resolved = resolveBookmarkData(tests::writtenAlias(alias), mounted);
        return resolved ? resolved->url->path() + (resolved->isStale ? " (stale)" : "")
                        : resolved.error().localizedDescription();
    }

    tests::PretendVolumes mounted;
    tests::WrittenAlias alias = tests::noteAlias(3);
};

TEST_F(AliasResolution, findsTheItemOnItsVolumeWhereverThatIsMounted) {
    mountDisk("/media/disk");
    EXPECT_EQ(found(), "/media/disk/folder/note.txt");
    const auto resolved = resolveBookmarkData(tests::writtenAlias(alias), mounted);
    EXPECT_EQ(resolved->match.volume, VolumeMatch::nameAndCreationDate);
    EXPECT_EQ(resolved->match.storedNumber, 30);
}

TEST_F(AliasResolution, ofVersionTwoFindsTheVolumeByItsLocalDate) {
    alias = tests::noteAlias(2);
    mountDisk("/media/disk");
    EXPECT_EQ(found(), "/media/disk/folder/note.txt");
}

TEST_F(AliasResolution, findsTheItemByItsNumbers) {
    mountDisk("/media/disk");
    mounted.move("/media/disk/folder", "/media/disk/renamed");
    EXPECT_EQ(found(), "/media/disk/renamed/note.txt (stale)");
}

TEST_F(AliasResolution, ofVersionTwoFindsTheItemByItsNumbersIfItsLocalDateAgrees) {
    alias = tests::noteAlias(2);
    mountDisk("/media/disk");
    mounted.move("/media/disk/folder", "/media/disk/renamed");
    EXPECT_EQ(found(), "/media/disk/renamed/note.txt (stale)");
    alias.time -= 8 * 60 * 60;
    EXPECT_EQ(found(), "/media/disk/renamed/note.txt (stale)") << "the Mac's zone may be any";
    alias.time += 1;
    EXPECT_EQ(
        found(), "Nothing is at /media/disk/folder/note.txt, and the item is nowhere else on the volume.");
}

TEST_F(AliasResolution, neverTakesAnotherVolumesItemOfThatPath) {
    EXPECT_EQ(found(), "The bookmark's volume is not mounted: \u201CDisk\u201D.");
}

TEST_F(AliasResolution, namesTheDiskImageOfAVolumeThatIsNotMounted) {
    alias = tests::noteAliasInDiskImage(3);
    EXPECT_EQ(
        found(), "The bookmark's volume is not mounted: \u201CDisk\u201D. It was mounted from the disk image "
                 "/Users/demo/Disk.dmg.");
}

TEST_F(AliasResolution, saysThatARecordHasNoPath) {
    alias.tags = {};
    EXPECT_EQ(found(), "The bookmark contains no path.");
}

} // namespace
} // namespace tolvane::platform
