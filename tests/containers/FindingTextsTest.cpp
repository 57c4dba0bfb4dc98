#include "containers/FindingTexts.h"

#include <gtest/gtest.h>

namespace tolvane::containers {
namespace {

Finding dockTile() {
    Finding finding;
    finding.where = "/persistent-apps[0]/tile-data/book";
    finding.bytes.resize(712);
    finding.version = 0x1004'0000;
    finding.path = "/Applications/Mail.app";
    finding.volumeName = "Macintosh HD";
    finding.volumeUUID = "1111";
    finding.created = platform::Date(0);
    finding.name = "Mail";
    finding.neighbour = "file:///Applications/Other.app/";
    finding.mismatch = true;
    finding.flags = {"hidden", "enabled"};
    return finding;
}

TEST(FindingTexts, sayAllThatAFindingSays) {
    EXPECT_EQ(
        findingDetails(dockTile()),
        "Kind: bookmark, version 0x10040000, 712 bytes\n"
        "Where in the file: /persistent-apps[0]/tile-data/book\n"
        "Path: /Applications/Mail.app\n"
        "Volume: Macintosh HD\n"
        "Volume UUID: 1111\n"
        "Created: 2001-01-01 00:00:00 +0000\n"
        "Name: Mail\n"
        "Flags: hidden, enabled\n"
        "Beside it: file:///Applications/Other.app/\n"
        "Agreement: differs: the bookmark names another item than the path or URL beside it\n");
}

TEST(FindingTexts, leaveOutWhatIsNotKnown) {
    EXPECT_EQ(findingDetails({}), "Kind: bookmark\n");
    Finding agreeing;
    agreeing.kind = FindingKind::alias;
    agreeing.version = 3;
    agreeing.mismatch = false;
    EXPECT_EQ(
        findingDetails(agreeing),
        "Kind: alias, version 3\nAgreement: agrees with the path or URL beside it\n");
}

TEST(FindingTexts, keepEachFactOnOneLine) {
    Finding finding;
    finding.path = "/a\nURL: b";
    EXPECT_EQ(findingDetails(finding), "Kind: bookmark\nPath: /a⟨LF⟩URL: b\n");
}

TEST(FindingTexts, distinguishWarningsFromWhatCannotBeRead) {
    Finding finding;
    finding.warnings = {"odd"};
    EXPECT_EQ(findingDetails(finding), "Kind: bookmark\nWarning: odd\n");
    finding.isReadable = false;
    EXPECT_EQ(findingDetails(finding), "Kind: bookmark\nNot readable: odd\n");
}

TEST(FindingTexts, nameTheTargetByWhatThereIs) {
    Finding finding = dockTile();
    EXPECT_EQ(targetText(finding), "/Applications/Mail.app");
    finding.path.reset();
    EXPECT_EQ(targetText(finding), "Mail");
    finding.url = "smb://server/share";
    EXPECT_EQ(targetText(finding), "smb://server/share");
    finding.isReadable = false;
    EXPECT_EQ(targetText(finding), "not readable");
    EXPECT_EQ(targetText({}), "");
}

TEST(FindingTexts, nameTheVolumeByItsUUIDWhereItHasNoName) {
    Finding finding = dockTile();
    EXPECT_EQ(volumeText(finding), "Macintosh HD");
    finding.volumeName.reset();
    EXPECT_EQ(volumeText(finding), "1111");
    EXPECT_EQ(volumeText({}), "");
}

TEST(FindingTexts, sayWhichTimesAreLocal) {
    Finding finding = dockTile();
    EXPECT_EQ(createdText(finding), "2001-01-01 00:00:00 +0000");
    finding.createdLocal = platform::Date(60);
    EXPECT_EQ(createdText(finding), "2001-01-01T00:01:00 local time");
    EXPECT_EQ(createdText({}), "");
}

TEST(FindingTexts, describeEveryKindOfContainer) {
    EXPECT_EQ(containerDescription("dock"), "a list of the Dock");
    EXPECT_EQ(containerDescription("propertyList"), "a property list");
}

} // namespace
} // namespace tolvane::containers
