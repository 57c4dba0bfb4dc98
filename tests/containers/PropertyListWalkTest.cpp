#include "containers/PropertyListWalk.h"

#include "tests/containers/Samples.h"

namespace tolvane::containers {
namespace {

using namespace tests;
using platform::Array;
using platform::Data;
using platform::Dictionary;
using platform::Value;
using testing::ElementsAre;

std::string listOf(const Value& value) {
    return binaryPropertyList(value).value();
}

Value reference(std::int64_t number) {
    return Dictionary{{"CF$UID", number}};
}

/// An archive whose root is a dictionary with one key.
Value archiveWith(std::string_view key, const Value& value) {
    return Dictionary{
        {"$top", Dictionary{{"root", reference(1)}}},
        {"$objects",
         Array{"$null", Dictionary{{"NS.keys", Array{key}}, {"NS.objects", Array{reference(2)}}}, value}}};
}

TEST(PropertyListWalk, findsBookmarksAtAnyDepthInEveryForm) {
    const Value list = Dictionary{{"a", Array{"x", Dictionary{{"b c", noteData()}}}}};
    for (const auto& bytes : {binaryPropertyList(list), xmlPropertyList(list)}) {
        EXPECT_THAT(outlineOf(*bytes), ElementsAre("propertyList", "/a[1]/b c"));
        EXPECT_EQ(onlyFindingIn(*bytes).bytes, noteData());
    }
}

TEST(PropertyListWalk, quotesKeysThatCouldBeSteps) {
    EXPECT_THAT(
        outlineOf(listOf(Dictionary{{"file:///a", Dictionary{{"kBookmarkDataKey", noteData()}}}})),
        ElementsAre("propertyList", "/\"file:///a\"/kBookmarkDataKey"));
}

TEST(PropertyListWalk, findsWhatArchivesHold) {
    EXPECT_THAT(
        outlineOf(listOf(archiveWith("items", Array{Dictionary{{"Bookmark", noteData()}}}))),
        ElementsAre("sharedFileList", "/root/items[0]/Bookmark"));
}

TEST(PropertyListWalk, endsWhereAnArchiveIsACircle) {
    const Value item = Dictionary{{"bookmark", noteData()}, {"container", reference(1)}};
    EXPECT_EQ(
        onlyFindingIn(listOf(archiveWith("backgroundItems", item))).where, "/root/backgroundItems/bookmark");
}

TEST(PropertyListWalk, looksIntoListsThatAreData) {
    const std::string archive = listOf(archiveWith("actions", Dictionary{{"bookmark", noteData()}}));
    EXPECT_THAT(
        outlineOf(listOf(Dictionary{{"folderActions", bytesOf(archive)}})),
        ElementsAre("folderActions", "/folderActions/root/actions/bookmark"));
}

TEST(PropertyListWalk, looksIntoListsWithinListsUpToALimit) {
    Value list = Dictionary{{"b", noteData()}};
    for (unsigned i = 0; i < deepestNestedList; ++i) {
        list = Dictionary{{"l", bytesOf(listOf(list))}};
    }
    EXPECT_EQ(foundIn(listOf(list))->findings.size(), 1U);
    list = Dictionary{{"l", bytesOf(listOf(list))}};
    const auto found = foundIn(listOf(list));
    EXPECT_TRUE(found->findings.empty());
    EXPECT_THAT(found->complaints, ElementsAre(testing::EndsWith("lies too deep and was left out.")));
}

TEST(PropertyListWalk, findsBookmarksInTexts) {
    EXPECT_EQ(onlyFindingIn(listOf(Dictionary{{"a", noteBase64()}})).where, "/a");
    EXPECT_EQ(onlyFindingIn(listOf(Dictionary{{"a", "x " + noteBase64()}})).where, "/a@2");
}

TEST(PropertyListWalk, readsTheLabelsOfADockTile) {
    const auto tileFor = [](const std::string& url) {
        return listOf(Dictionary{
            {"persistent-apps",
             Array{Dictionary{
                 {"tile-data",
                  Dictionary{
                      {"book", noteData()},
                      {"file-label", "Note"},
                      {"file-data",
                       Dictionary{{"_CFURLString", url}, {"_CFURLStringType", std::int64_t{15}}}}}}}}}});
    };
    const Finding same = onlyFindingIn(tileFor("file:///Users/demo/note.txt"));
    EXPECT_EQ(same.where, "/persistent-apps[0]/tile-data/book");
    EXPECT_EQ(same.name, "Note");
    EXPECT_EQ(same.mismatch, false);
    EXPECT_EQ(onlyFindingIn(tileFor("file:///Applications/Evil.app/")).mismatch, true);
    EXPECT_EQ(foundIn(tileFor(""))->container, "dock");
}

TEST(PropertyListWalk, readsTheLabelsOfListItems) {
    const Finding finding = onlyFindingIn(listOf(Dictionary{
        {"SessionItems",
         Dictionary{
             {"CustomListItems",
              Array{Dictionary{{"Name", "Helper"}, {"Alias", writtenAlias(noteAlias(3))}}}}}}}));
    EXPECT_EQ(finding.kind, FindingKind::alias);
    EXPECT_EQ(finding.name, "Helper");
}

TEST(PropertyListWalk, takesNoLabelsFromBeyondAnArray) {
    const Finding finding =
        onlyFindingIn(listOf(Dictionary{{"Name", "List"}, {"items", Array{Dictionary{{"b", noteData()}}}}}));
    EXPECT_NE(finding.name, "List");
}

TEST(PropertyListWalk, showsWhereAnInternetLocationLeads) {
    const Finding finding = onlyFindingIn(listOf(Dictionary{{"URL", "https://example.org/"}}));
    EXPECT_EQ(finding.kind, FindingKind::url);
    EXPECT_EQ(finding.url, "https://example.org/");
    EXPECT_EQ(finding.where, "/URL");
    const Finding cloud =
        onlyFindingIn(listOf(Dictionary{{"NSURLNameKey", "a.txt"}, {"NSURLFileSizeKey", std::int64_t{1}}}));
    EXPECT_EQ(cloud.name, "a.txt");
}

TEST(PropertyListWalk, saysWhereAListIsBroken) {
    ASSERT_THAT(outlineOf("bplist00 and no more"), ElementsAre("propertyList"));
    EXPECT_THAT(
        foundIn("bplist00 and no more")->complaints,
        ElementsAre(testing::StartsWith("The property list cannot be read: expected")));
}

TEST(PropertyListWalk, recognisesKnownListsByTheirKeys) {
    const auto kindOf = [](std::string_view key) {
        return foundIn(listOf(Dictionary{{key.data(), Array{}}, {"x", "y"}}))->container;
    };
    EXPECT_EQ(kindOf("FXRecentFolders"), "finder");
    EXPECT_EQ(kindOf("RecentDocuments"), "recentItems");
    EXPECT_EQ(kindOf("systemitems"), "sidebarLists");
    EXPECT_EQ(kindOf("DownloadHistory"), "downloads");
    EXPECT_EQ(kindOf("BackupAlias"), "timeMachine");
    EXPECT_EQ(kindOf("other"), "propertyList");
}

} // namespace
} // namespace tolvane::containers
