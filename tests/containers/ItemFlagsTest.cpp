#include "containers/ItemFlags.h"

#include "tests/containers/Samples.h"

namespace tolvane::containers {
namespace {

using platform::Array;
using platform::Dictionary;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> flagsOf(std::string_view kind, const Dictionary& item) {
    const Dictionary* const around = &item;
    return itemFlags(kind, {&around, 1});
}

TEST(ItemFlags, areNoneInListsThatAreNotKnown) {
    const Dictionary item{{"hidden", true}, {"enabled", true}, {"Hide", true}};
    for (const std::string_view kind : {"propertyList", "keyedArchive", "dock", ""}) {
        EXPECT_THAT(flagsOf(kind, item), IsEmpty());
    }
    EXPECT_THAT(itemFlags("loginItems", {}), IsEmpty());
}

TEST(ItemFlags, ofSharedListsAreInTheirItemsProperties) {
    const Dictionary item{
        {"CustomItemProperties",
         Dictionary{
             {"com.apple.LSSharedFileList.ItemIsHidden", true},
             {"com.apple.LSSharedFileList.SpecialItemIdentifier", "com.apple.LSSharedFileList.IsComputer"},
             {"com.apple.loginitem.legacyprefs", Dictionary{{"Hide", std::int64_t{1}}}}}}};
    for (const std::string_view kind : {"sharedFileList", "loginItems", "recentItems", "sidebarLists"}) {
        EXPECT_THAT(flagsOf(kind, item), ElementsAre("hidden", "special item IsComputer", "hidden at login"));
    }
    EXPECT_THAT(
        flagsOf(
            "sharedFileList",
            Dictionary{
                {"CustomItemProperties",
                 Dictionary{
                     {"com.apple.LSSharedFileList.ItemIsHidden", false},
                     {"com.apple.LSSharedFileList.SpecialItemIdentifier", "other"}}}}),
        ElementsAre("special item other"));
}

TEST(ItemFlags, ofOldLoginItemsAreBesideTheAlias) {
    EXPECT_THAT(flagsOf("loginItems", Dictionary{{"Hide", true}}), ElementsAre("hidden at login"));
    EXPECT_THAT(flagsOf("loginItems", Dictionary{{"Hide", false}}), IsEmpty());
    EXPECT_THAT(flagsOf("loginItems", Dictionary{{"Hide", "yes"}}), IsEmpty()) << "no truth value";
}

TEST(ItemFlags, ofBackgroundItemsAreWordsForBits) {
    EXPECT_THAT(
        flagsOf(
            "backgroundItems",
            Dictionary{{"type", std::int64_t{0x10010}}, {"disposition", std::int64_t{11}}}),
        ElementsAre("daemon", "legacy", "enabled", "allowed", "notified"));
    EXPECT_THAT(
        flagsOf(
            "backgroundItems", Dictionary{{"type", std::int64_t{0x42}}, {"disposition", std::int64_t{0x24}}}),
        ElementsAre(
            "application", "0x40", "not enabled", "not allowed", "perhaps hidden", "not notified", "0x20"));
    EXPECT_THAT(
        flagsOf("backgroundItems", Dictionary{{"type", std::int64_t{2}}, {"hidden", true}}),
        ElementsAre("hidden"))
        << "what its types are is known of later lists only";
    EXPECT_THAT(flagsOf("backgroundItems", Dictionary{{"disposition", "text"}}), IsEmpty());
}

TEST(ItemFlags, ofFolderActionsAreThoseOfTheNearest) {
    const Dictionary action{{"enabled", true}};
    const Dictionary script{{"enabled", false}};
    const std::vector<const Dictionary*> around{&action, &script};
    EXPECT_THAT(itemFlags("folderActions", around), ElementsAre("not enabled"));
    const Dictionary plain;
    const std::vector<const Dictionary*> inPlain{&action, &plain};
    EXPECT_THAT(itemFlags("folderActions", inPlain), ElementsAre("enabled"));
}

TEST(ItemFlags, areFoundWithTheirBookmarks) {
    const Dictionary item{{"Alias", tests::corpusData("note.bookmark")}, {"Hide", true}};
    const Dictionary list{{"SessionItems", Dictionary{{"CustomListItems", Array{item}}}}};
    const Finding finding = tests::onlyFindingIn(tests::binaryPropertyList(list).value());
    EXPECT_THAT(finding.flags, ElementsAre("hidden at login"));
}

TEST(ItemFlags, areThoseOfTheListThatAnArchiveLiesIn) {
    const platform::Value archive = Dictionary{
        {"$top", Dictionary{{"root", Dictionary{{"CF$UID", std::int64_t{1}}}}}},
        {"$objects",
         Array{"$null", Dictionary{{"bookmark", tests::corpusData("note.bookmark")}, {"enabled", true}}}}};
    const std::string bytes = tests::binaryPropertyList(archive).value();
    const Dictionary list{{"folderActions", tests::bytesOf(bytes)}};
    EXPECT_THAT(tests::onlyFindingIn(tests::binaryPropertyList(list).value()).flags, ElementsAre("enabled"));
}

} // namespace
} // namespace tolvane::containers
