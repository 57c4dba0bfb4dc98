#include "containers/FindBookmarks.h"

#include "tests/containers/Samples.h"
#include "tests/support/AppleDoubleFiles.h"
#include "tests/support/FolderSettingsFiles.h"
#include "tests/support/OldAliasFiles.h"

namespace tolvane::containers {
namespace {

using namespace tests;
using platform::Data;
using platform::Dictionary;
using testing::ElementsAre;

TEST(FindBookmarks, recognisesOneAlone) {
    EXPECT_THAT(outlineOf(noteData()), ElementsAre("bookmark", ""));
    EXPECT_THAT(outlineOf(corpusText("note.alias")), ElementsAre("aliasFile", ""));
    EXPECT_THAT(outlineOf(writtenAlias(noteAlias())), ElementsAre("aliasRecord", ""));
}

TEST(FindBookmarks, joinsABookmarkThatTheFinderCut) {
    const Data note = noteData();
    const auto middle = note.begin() + 300;
    const Data settings = folderSettingsFile(
        {blobSetting(".", "pBB0", Data(middle, note.end())),
         blobSetting(".", "pBBk", Data(note.begin(), middle)), blobSetting("other", "pBBk", note)});
    ASSERT_THAT(outlineOf(settings), ElementsAre("folderSettings", "./pBBk+pBB0", "other/pBBk"));
    EXPECT_EQ(foundIn(settings)->findings[0].bytes, note);
}

TEST(FindBookmarks, findsThePictureBehindAFolder) {
    const std::string view =
        binaryPropertyList(Dictionary{{"backgroundImageAlias", writtenAlias(noteAlias())}}).value();
    EXPECT_THAT(
        outlineOf(folderSettingsFile(
            {blobSetting(".", "icvp", bytesOf(view)), blobSetting(".", "pict", writtenAlias(noteAlias()))})),
        ElementsAre("folderSettings", "./icvp/backgroundImageAlias", "./pict"));
}

TEST(FindBookmarks, tellsWhereItemsOfTheTrashCameFrom) {
    const auto found = foundIn(folderSettingsFile(
        {textSetting("a 2.txt", "ptbL", "Users/demo/"), textSetting("a 2.txt", "ptbN", "a.txt"),
         textSetting("b", "ptbL", "Users/demo/")}));
    ASSERT_TRUE(found);
    ASSERT_EQ(found->findings.size(), 2U);
    EXPECT_EQ(found->findings[0].kind, FindingKind::origin);
    EXPECT_EQ(found->findings[0].where, "a 2.txt/ptbL");
    EXPECT_EQ(found->findings[0].path, "Users/demo/a.txt");
    EXPECT_EQ(found->findings[0].name, "a.txt");
    EXPECT_EQ(found->findings[1].path, "Users/demo/");
    EXPECT_FALSE(found->findings[1].name);
}

TEST(FindBookmarks, looksIntoResourceForksAndAttributes) {
    const Data fork = resourceForkOf(
        {{"alis", 0, writtenAlias(noteAlias()), "note alias"},
         {"url ", 256, bytesOf("https://example.org/")}});
    ASSERT_THAT(outlineOf(fork), ElementsAre("resourceFork", "/alis 0", "/url  256"));
    EXPECT_EQ(foundIn(fork)->findings[0].name, "note alias");
    EXPECT_EQ(foundIn(fork)->findings[1].url, "https://example.org/");
    EXPECT_THAT(
        outlineOf(companionFileWithAttributes({{"com.example.place", corpusText("note.bookmark")}}, fork)),
        ElementsAre(
            "appleDouble", "/resources/alis 0", "/resources/url  256", "/attributes/com.example.place"));
}

TEST(FindBookmarks, stopsWherePartsOverlap) {
    Data fork = resourceForkOf({{"data", 0, Data(5'000), ""}, {"data", 1, Data(1), ""}});
    // The second begins behind the length and the bytes of the first, and is made to begin where that does.
    const std::array second{std::byte{0}, std::byte{0x13}, std::byte{0x8C}};
    const auto offset = std::ranges::search(fork, second);
    ASSERT_EQ(offset.size(), second.size());
    std::ranges::fill(offset, std::byte{0});
    EXPECT_EQ(
        foundIn(fork)->complaints,
        std::vector<std::string>{"Parts of the file overlap; what follows them was not searched."});
}

TEST(FindBookmarks, saysWhereAContainerIsBroken) {
    Data settings = folderSettingsFile({});
    settings.at(8) = std::byte{1};
    EXPECT_EQ(
        foundIn(settings)->complaints,
        std::vector<std::string>{
            "The settings of a folder cannot be read: expected the place of the table of blocks at byte 8."});
    Data companion = companionFile({{2, Data(4)}});
    companion.pop_back();
    EXPECT_EQ(
        foundIn(companion)->complaints,
        std::vector<std::string>{
            "The AppleDouble file cannot be read: expected a part within the file at byte 26."});
}

TEST(FindBookmarks, findsRunsOfDigitsInText) {
    EXPECT_THAT(outlineOf("{\"bookmark\": \"" + noteBase64() + "\"}"), ElementsAre("text", "@14"));
}

TEST(FindBookmarks, readsListsInTheOldestForm) {
    EXPECT_THAT(
        outlineOf("{ a = <62 6f 6f 6b> ; b = ( \"" + noteBase64() + "\" ); }"),
        ElementsAre("propertyList", "/b[0]"));
}

TEST(FindBookmarks, tellsFromTheFrontWhatIsNoContainer) {
    const auto mayBe = [](const Data& bytes) {
        return mayBeContainer(std::span(bytes).first(std::min(bytes.size(), containerFrontLength)));
    };
    for (const Data& bytes :
         {noteData(), bytesOf(corpusText("note.alias")), writtenAlias(noteAlias()),
          writtenAlias(noteAlias(3)), folderSettingsFile({}), companionFile({}), resourceForkOf({{"alis"}}),
          bytesOf("text"), bytesOf("{}"), bytesOf(binaryPropertyList(Dictionary{}).value()),
          bytesOf("<?xml")}) {
        EXPECT_TRUE(mayBe(bytes));
    }
    EXPECT_FALSE(mayBe(Data(100)));
    EXPECT_FALSE(mayBe(bytesOf(std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16))));
    EXPECT_FALSE(foundIn(std::string("\0", 1) + noteBase64())) << "binary data are not searched for digits";
}

TEST(FindBookmarks, leavesOtherFilesAlone) {
    for (const auto* const text : {"", "text", "{ json: 1 }", "<html/>", "bookkeeping"}) {
        EXPECT_FALSE(foundIn(text)) << text;
    }
    EXPECT_FALSE(foundIn(Data(4096)));
}

TEST(FindBookmarks, endsForAnyContainerCutAnywhere) {
    const std::vector<Data> containers{
        noteData(), writtenAlias(noteAlias()),
        companionFileWithAttributes(
            {{"a", corpusText("note.bookmark")}}, resourceForkOf({{"alis", 0, noteData()}})),
        bytesOf(binaryPropertyList(Dictionary{{"a", noteData()}}).value()),
        bytesOf(xmlPropertyList(Dictionary{{"a", noteData()}}).value())};
    for (const Data& container : containers) {
        for (std::size_t count = 0; count < container.size(); count += 7) {
            const auto found = foundIn(front(container, count)).value_or(FoundBookmarks());
            for (const Finding& finding : found.findings) {
                EXPECT_TRUE(finding.isReadable || !finding.warnings.empty());
            }
        }
    }
}

TEST(FindBookmarks, looksIntoTheValuesOfAttributes) {
    const auto one = findBookmarksInAttribute("user.app", noteData());
    ASSERT_EQ(one.findings.size(), 1U);
    EXPECT_EQ(one.container, "attributes");
    EXPECT_EQ(one.findings[0].where, "/attributes/user.app");
    const auto fork =
        findBookmarksInAttribute("user.com.apple.ResourceFork", forkWith({{0, writtenAlias(noteAlias())}}));
    ASSERT_EQ(fork.findings.size(), 1U);
    EXPECT_EQ(fork.findings[0].where, "/attributes/user.com.apple.ResourceFork/alis 0");
    EXPECT_EQ(fork.findings[0].kind, FindingKind::alias);
    const std::string list = binaryPropertyList(Dictionary{{"a", noteData()}}).value();
    EXPECT_EQ(
        findBookmarksInAttribute("user.list", std::as_bytes(std::span(list))).findings.at(0).where,
        "/attributes/user.list/a");
    EXPECT_TRUE(findBookmarksInAttribute("user.text", Data(20)).findings.empty());
    EXPECT_EQ(findBookmarksInAttribute("user.com.apple.ResourceFork", Data(20)).complaints.size(), 1U);
}

} // namespace
} // namespace tolvane::containers
