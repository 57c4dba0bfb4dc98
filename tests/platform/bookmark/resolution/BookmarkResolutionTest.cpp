#include "platform/bookmark/resolution/BookmarkResolution.h"

#include "platform/bookmark/format/BookmarkComposer.h"
#include "platform/values/Error.h"
#include "tests/platform/bookmark/Examples.h"
#include "tests/platform/bookmark/resolution/PretendVolumes.h"

#include <algorithm>

namespace tolvane::platform {
namespace {

constexpr double born = 700'000'000.25;
constexpr const char* systemUUID = "AAAAAAAA-0000-0000-0000-000000000001";
constexpr const char* stickUUID = "BBBBBBBB-0000-0000-0000-000000000002";

BookmarkVolume volumeAt(const std::string& path, const std::string& uuid) {
    BookmarkVolume volume;
    volume.path = path;
    volume.uuid = uuid;
    return volume;
}

class BookmarkResolution : public testing::Test {
protected:
    BookmarkResolution() {
        auto& root = mounted.mount("/", 10);
        root.volume.name = "System";
        root.uuid = systemUUID;
        root.capacity = 1'000;
        mounted.addFolder("/home", 20);
        mounted.addFolder("/home/anna", 21);
        mounted.addFile("/home/anna/may", 22, born);

        contents.pathComponents = {"home", "anna", "may"};
        contents.fileIDs = {20, 21, 22};
        contents.creationDate = Date(born);
        contents.fileFlags = BookmarkFlags{0x1, 0xF, 0};
        contents.volume.path = "/";
        contents.volume.uuid = systemUUID;
        contents.volume.name = "System";
        contents.volume.capacity = 1'000;
        contents.volume.wasBoot = true;
    }

    /// Makes the contents those of a bookmark to /media/stick/may.
    void storeStick() {
        contents.pathComponents = {"media", "stick", "may"};
        contents.fileIDs = {30, 2, 31};
        contents.volume = volumeAt("/media/stick", stickUUID);
        contents.volume.name = "Stick";
        contents.volume.capacity = 500;
    }

    void mountStick(const std::string& mountPoint) {
        auto& stick = mounted.mount(mountPoint, 11);
        stick.volume.name = "Stick";
        stick.uuid = stickUUID;
        stick.capacity = 500;
        mounted.addFile(mountPoint + "/may", 31, born);
    }

    /// The item's path, marked if the bookmark is stale.
    std::string found() const {
        const auto resolved = resolveBookmark(contents, mounted);
        return resolved ? resolved->url.value().path() + (resolved->isStale ? " (stale)" : "") : "nothing";
    }

    BookmarkMatch match() const {
        const auto resolved = resolveBookmark(contents, mounted);
        return resolved ? resolved->match : BookmarkMatch();
    }

    /// The code and the sentence of a failure.
    static std::string failureOf(const Result<ResolvedBookmark>& resolved) {
        if (resolved) {
            return "no failure";
        }
        EXPECT_EQ(resolved.error().domain, NSCocoaErrorDomain);
        return std::to_string(resolved.error().code) + ": " + resolved.error().localizedDescription();
    }

    std::string failure() const { return failureOf(resolveBookmark(contents, mounted)); }

    tests::PretendVolumes mounted;
    BookmarkContents contents;
};

TEST_F(BookmarkResolution, findsTheItemAtItsPath) {
    EXPECT_EQ(found(), "/home/anna/may");
    EXPECT_EQ(match(), (BookmarkMatch{VolumeMatch::uuid, ItemMatch::path, 22, 22, Date(born), Date(born)}));
    EXPECT_TRUE(mounted.foldersRead.empty());
}

TEST_F(BookmarkResolution, prefersANewItemAtThePathToTheMovedOne) {
    mounted.move("/home/anna/may", "/home/anna/june");
    mounted.addFile("/home/anna/may", 99, born + 5);
    EXPECT_EQ(found(), "/home/anna/may (stale)");
    EXPECT_EQ(
        match(), (BookmarkMatch{VolumeMatch::uuid, ItemMatch::path, 22, 99, Date(born), Date(born + 5)}));
}

TEST_F(BookmarkResolution, isNotStaleWithoutAStoredNumber) {
    contents.fileIDs = {20, 21, std::nullopt};
    mounted.item("/home/anna/may").fileNumber = 99;
    EXPECT_EQ(found(), "/home/anna/may");
    contents.fileIDs.reset();
    EXPECT_EQ(found(), "/home/anna/may");
    EXPECT_EQ(match().storedNumber, std::nullopt);
    EXPECT_EQ(match().actualNumber, 99);
}

TEST_F(BookmarkResolution, findsARenamedItemByNumberAndCallsItStale) {
    mounted.move("/home/anna/may", "/home/anna/june");
    EXPECT_EQ(found(), "/home/anna/june (stale)");
    EXPECT_EQ(match().item, ItemMatch::fileNumbers);
    mounted.move("/home/anna", "/home/bert");
    EXPECT_EQ(found(), "/home/bert/june (stale)");
    contents.fileFlags.reset();
    EXPECT_EQ(found(), "/home/bert/june (stale)") << "the item's kind need not be stored";
    EXPECT_EQ(match().item, ItemMatch::fileNumbers);
}

TEST_F(BookmarkResolution, searchesFromWhereANumberIsMissingOnTheWay) {
    contents.fileIDs = {20, std::nullopt, 22};
    mounted.move("/home/anna", "/home/bert");
    EXPECT_EQ(found(), "/home/bert/may (stale)");
    EXPECT_EQ(match().item, ItemMatch::search);
}

TEST_F(BookmarkResolution, searchesNoVolumeThatIsNotListed) {
    contents.volume = BookmarkVolume();
    mounted.move("/home/anna/may", "/home/anna/june");
    EXPECT_EQ(found(), "/home/anna/june (stale)");
    mounted.item("/home/anna").volume = 99;
    EXPECT_EQ(found(), "nothing");
}

TEST_F(BookmarkResolution, searchesNoVolumeThatThePathCameToByALink) {
    mountStick("/media/stick");
    contents.volume = BookmarkVolume();
    mounted.move("/home/anna/may", "/home/anna/june");
    mounted.item("/home/anna").volume = 2;
    EXPECT_EQ(found(), "nothing");
}

TEST_F(BookmarkResolution, findsAMovedItemBySearchAndCallsItStale) {
    mounted.addFolder("/srv", 40);
    mounted.move("/home/anna/may", "/srv/may");
    EXPECT_EQ(found(), "/srv/may (stale)");
    EXPECT_EQ(match(), (BookmarkMatch{VolumeMatch::uuid, ItemMatch::search, 22, 22, Date(born), Date(born)}));
}

TEST_F(BookmarkResolution, neverFindsAnItemThatGotTheNumberLater) {
    mounted.remove("/home/anna/may");
    mounted.addFile("/home/anna/june", 22, born + 60);
    EXPECT_EQ(failure(), "4: Nothing is at /home/anna/may, and the item is nowhere else on the volume.");
}

TEST_F(BookmarkResolution, usesThePathAloneWithoutACreationDateOrANumber) {
    mounted.move("/home/anna/may", "/home/anna/june");
    contents.creationDate.reset();
    EXPECT_EQ(
        failure(),
        "4: Nothing is at /home/anna/may, and the bookmark stores too little to search for the item.");
    contents.creationDate = Date(born);
    EXPECT_EQ(found(), "/home/anna/june (stale)");
    contents.fileIDs = {20, 21};
    EXPECT_EQ(found(), "nothing") << "one number for each component, or they mean nothing";
    contents.fileIDs.reset();
    EXPECT_EQ(found(), "nothing");
    EXPECT_EQ(mounted.foldersRead.size(), 1U);
}

TEST_F(BookmarkResolution, usesThePathBelowTheCurrentMountPoint) {
    storeStick();
    mountStick("/mnt/evidence");
    EXPECT_EQ(found(), "/mnt/evidence/may");
    EXPECT_EQ(match().volume, VolumeMatch::uuid);
    mounted.move("/mnt/evidence/may", "/mnt/evidence/june");
    EXPECT_EQ(found(), "/mnt/evidence/june (stale)");
}

TEST_F(BookmarkResolution, findsAStartUpDiskMountedBelowAnotherFolder) {
    mounted = {};
    mounted.mount("/", 12).uuid = stickUUID;
    auto& disk = mounted.mount("/mnt/disk", 10);
    disk.uuid = systemUUID;
    mounted.addFile("/mnt/disk/home/anna/may", 22, born);
    mounted.addFile("/home/anna/may", 22, born);
    EXPECT_EQ(found(), "/mnt/disk/home/anna/may");
}

TEST_F(BookmarkResolution, findsTheTopOfAVolume) {
    storeStick();
    contents.pathComponents = {"media", "stick"};
    contents.fileIDs = {30, 2};
    contents.fileFlags = BookmarkFlags{0xA, 0xF, 0};
    mountStick("/mnt/evidence");
    EXPECT_EQ(found(), "/mnt/evidence");
    contents.volume = volumeAt("/", systemUUID);
    contents.pathComponents = std::vector<std::string>();
    contents.fileIDs.reset();
    EXPECT_EQ(found(), "/");
}

TEST_F(BookmarkResolution, failsForAVolumeThatIsNotMountedEvenWhereThePathExists) {
    contents.volume.uuid = stickUUID;
    EXPECT_EQ(
        failure(),
        std::string("4: The bookmark's volume is not mounted: \u201CSystem\u201D, UUID ") + stickUUID + ".");
    contents.volume.uuid.reset();
    contents.volume.capacity.reset();
    EXPECT_EQ(failure(), "4: The bookmark's volume is not mounted: \u201CSystem\u201D.");
    contents.volume.name.reset();
    EXPECT_EQ(found(), "/home/anna/may");
}

TEST_F(BookmarkResolution, findsNoItemOfAnotherVolumeAtThePath) {
    mounted.mount("/home/anna", 12);
    mounted.addFile("/home/anna/may", 22, born);
    EXPECT_EQ(found(), "nothing");
}

TEST_F(BookmarkResolution, findsNoItemThatALinkLeadsToOnAnotherVolume) {
    mountStick("/mnt/evidence");
    storeStick();
    contents.pathComponents = {"media", "stick", "etc", "passwd"};
    contents.fileIDs.reset();
    // As when /mnt/evidence/etc is a link to /etc of this machine.
    mounted.addFile("/mnt/evidence/etc/passwd", 50, born);
    mounted.item("/mnt/evidence/etc/passwd").volume = 1;
    EXPECT_EQ(found(), "nothing");
}

TEST_F(BookmarkResolution, prefersThePlaceThatHasTheStoredNumber) {
    storeStick();
    mounted.mount("/media/stick", 11).uuid = stickUUID;
    mounted.addFile("/media/stick/may", 77, born + 1);
    mountStick("/mnt/evidence");
    EXPECT_EQ(found(), "/mnt/evidence/may");
    mounted.item("/mnt/evidence/may").fileNumber = 78;
    EXPECT_EQ(found(), "/media/stick/may (stale)");
}

TEST_F(BookmarkResolution, findsTheItemByNumberBeforeAnotherAtThePathElsewhere) {
    // A folder of the system volume that has the path too, mounted on its own.
    auto& part = mounted.mount("/jail", 10);
    part.uuid = systemUUID;
    part.volume.isWhole = false;
    mounted.addFile("/jail/home/anna/may", 99, born);
    mounted.move("/home/anna/may", "/home/anna/june");
    EXPECT_EQ(found(), "/home/anna/june (stale)");
    mounted.remove("/home/anna/june");
    EXPECT_EQ(found(), "nothing");
}

TEST_F(BookmarkResolution, findsAnItemThatWasBelowAFolderMountedOnItsOwn) {
    contents.pathComponents = {"mnt", "part", "home", "anna", "may"};
    contents.fileIDs = {40, 41, 42, 43, 44};
    contents.volume.path = "/mnt/part";
    mounted.addFolder("/src", 50);
    mounted.addFile("/src/may", 44, born);
    EXPECT_EQ(found(), "/src/may (stale)");
}

TEST_F(BookmarkResolution, findsAReplacedFileOnAVolumeMountedElsewhere) {
    storeStick();
    mountStick("/mnt/evidence");
    mounted.item("/mnt/evidence/may").fileNumber = 77;
    EXPECT_EQ(found(), "/mnt/evidence/may (stale)");
}

TEST_F(BookmarkResolution, doesNotTakeTheTopOfAVolumeForAMountedFile) {
    contents.pathComponents = {"onefile"};
    contents.fileIDs = {60};
    contents.volume.path = "/onefile";
    EXPECT_EQ(failure(), "4: The bookmark's item was a mount point that is not mounted now.");
}

TEST_F(BookmarkResolution, searchesSoManyEntriesInAllPlacesOfAVolumeTogether) {
    for (int i = 0; i < 5; ++i) {
        mounted.mount("/again" + std::to_string(i), 10).uuid = systemUUID;
    }
    mounted.remove("/home/anna/may");
    EXPECT_EQ(found(), "nothing");
    EXPECT_EQ(std::ranges::count(mounted.foldersRead, "/home"), 1);
    EXPECT_EQ(std::ranges::count(mounted.foldersRead, "/again1"), 0);
}

TEST_F(BookmarkResolution, usesTheFileSystemAsItIsWhenNoVolumeIsNamed) {
    contents.volume = {};
    EXPECT_EQ(found(), "/home/anna/may");
    EXPECT_EQ(match().volume, VolumeMatch::notNamed);
    mounted.move("/home/anna/may", "/home/anna/june");
    EXPECT_EQ(found(), "/home/anna/june (stale)");
}

TEST_F(BookmarkResolution, searchesTheVolumeOfTheDeepestFolderWhenNoVolumeIsNamed) {
    storeStick();
    contents.volume = {};
    mounted.addFolder("/media", 30);
    mountStick("/media/stick");
    mounted.move("/media/stick/may", "/media/stick/june");
    EXPECT_EQ(found(), "/media/stick/june (stale)");
}

TEST_F(BookmarkResolution, refusesPathsThatNoItemCanHave) {
    contents.pathComponents.reset();
    EXPECT_EQ(failure(), "259: The bookmark contains no path.");
    for (const std::string& name : {std::string(), std::string("a/b"), std::string("a\0b", 3)}) {
        contents.pathComponents = {"home", name, "may"};
        EXPECT_EQ(failure(), "259: The path in the bookmark contains an invalid file name.");
    }
}

TEST_F(BookmarkResolution, followsAFileURLWhereThereIsNoPath) {
    contents = {};
    contents.url = "file:///home/anna/may";
    EXPECT_EQ(found(), "/home/anna/may");
    contents.url = "file:///home/anna/june";
    EXPECT_TRUE(failure().starts_with("4: Nothing is at /home/anna/june"));
    contents.pathComponents = {"home", "anna", "may"};
    EXPECT_EQ(found(), "/home/anna/may");
}

TEST_F(BookmarkResolution, reportsAURLThatLeadsToNoFile) {
    contents = {};
    for (const std::string url : {"smb://host/share", "x-example:", "no URL"}) {
        contents.url = url;
        EXPECT_EQ(failure(), "262: The bookmark contains no path, only a URL that is not a file's: " + url);
    }
}

TEST_F(BookmarkResolution, refusesPathsLongerThanAnyPathHere) {
    contents.volume = {};
    contents.pathComponents = std::vector<std::string>(1'365, "ab");
    EXPECT_TRUE(failure().starts_with("4: Nothing is at /ab/ab/ab"));
    contents.pathComponents->emplace_back("");
    EXPECT_EQ(failure(), "258: The path in the bookmark is too long for this system.");
    contents.pathComponents = std::vector<std::string>(1'000'000, "ab");
    contents.fileIDs = std::vector<std::optional<std::int64_t>>(1'000'000, 20);
    EXPECT_EQ(failure(), "258: The path in the bookmark is too long for this system.");
}

TEST_F(BookmarkResolution, refusesAPathThatIsNotOnItsVolume) {
    storeStick();
    mountStick("/media/stick");
    contents.volume.path = "/media/other";
    EXPECT_EQ(failure(), "259: The path and the volume in the bookmark do not match.");
    contents.volume.path = "/media/stick/may/below";
    EXPECT_EQ(failure(), "259: The path and the volume in the bookmark do not match.");
}

TEST_F(BookmarkResolution, followsStepsUpwardInAPathButSearchesNothingWithThem) {
    contents.pathComponents = {"home", "bert", "..", "anna", "may"};
    contents.fileIDs = {20, 25, 20, 21, 22};
    mounted.addFile("/home/bert/../anna/may", 22, born);
    EXPECT_EQ(found(), "/home/bert/../anna/may");
    mounted.remove("/home/bert/../anna/may");
    EXPECT_EQ(found(), "nothing");
}

TEST_F(BookmarkResolution, reportsWhenTheWayIsDenied) {
    mounted.denied.insert("/home/anna");
    EXPECT_EQ(failure(), "257: Denied: /home/anna/may");
}

TEST_F(BookmarkResolution, reportsWhenNotEverythingCouldBeSearched) {
    mounted.remove("/home/anna/may");
    mounted.addFolder("/srv", 40);
    mounted.denied.insert("/srv");
    EXPECT_EQ(
        failure(),
        "4: Nothing is at /home/anna/may, and the item was not found in the part of the volume that could be "
        "searched.");
}

TEST_F(BookmarkResolution, parsesTheBookmark) {
    const auto resolved = resolveBookmarkData(composeBookmark(contents).value(), mounted);
    ASSERT_TRUE(resolved);
    EXPECT_EQ(resolved->url, URL::fileURLWithPath("/home/anna/may"));
    EXPECT_FALSE(resolved->isStale);
}

TEST_F(BookmarkResolution, refusesOtherBytesAndTheContentsOfAliasFiles) {
    EXPECT_EQ(
        failureOf(resolveBookmarkData(tests::dataOfHex("626f6f6b"), mounted)),
        "259: Not a readable bookmark: expected a header of 48 bytes at byte 4.");
    EXPECT_EQ(
        failureOf(resolveBookmarkData(tests::noteAliasFile(), mounted)),
        "259: These are the contents of an alias file, not bookmark data.");
}

} // namespace
} // namespace tolvane::platform
