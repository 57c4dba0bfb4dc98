#include "platform/bookmark/format/BookmarkComposer.h"

#include "platform/bookmark/format/BookmarkWriter.h"
#include "tests/platform/bookmark/Examples.h"

namespace tolvane::platform {
namespace {

using namespace tests;

std::string refusalOf(const BookmarkContents& contents) {
    const std::expected<Data, BookmarkRefusal> bytes = composeBookmark(contents);
    return bytes ? "none" : std::string(bytes.error().reason);
}

// BookmarkCorpusTest compares what is composed with whole bookmarks, byte by byte.

TEST(BookmarkComposer, writesATableForEachVolumeOnTheWay) {
    BookmarkContents contents = shareContents();
    contents.volumesBetween = {*contents.rootVolume, contents.volume};
    contents.volumesBetween[0].name = "Outer";
    contents.volumesBetween[1].mountURL = std::nullopt;
    contents.volumeDepths = {0xF000, 0xF001, 0xF002, 1};
    const BookmarkStructure structure = readWell(composeBookmark(contents).value());
    ASSERT_EQ(structure.tables.size(), 4U);
    EXPECT_EQ(structure.tables[1].identifier, 0xF000U);
    EXPECT_EQ(structure.tables[2].identifier, 0xF001U);
    EXPECT_EQ(structure.tables[3].identifier, 0xF002U);
    EXPECT_THAT(structure.warnings, testing::IsEmpty());
    EXPECT_TRUE(bookmarkContents(structure) == contents);
    for (const BookmarkVolume& volume : contentsForAliasFile(contents).volumesBetween) {
        EXPECT_EQ(volume.flags->requested, plainVolumeFlagMask);
    }
}

TEST(BookmarkComposer, refusesVolumesThatAreNotOnTheWay) {
    BookmarkContents contents = shareContents();
    contents.volumesBetween.resize(contents.volumeDepths.size() + 1);
    EXPECT_EQ(refusalOf(contents), "there are more volumes than components of the path");
    contents = noteContents();
    contents.volumesBetween.emplace_back();
    EXPECT_EQ(
        refusalOf(contents),
        "there are volumes between the root volume and the target's, but no root volume");
}

TEST(BookmarkComposer, pairsItsContentsWithThoseReadBack) {
    for (const BookmarkContents& contents : {noteContents(), shareContents(), BookmarkContents{}}) {
        EXPECT_TRUE(bookmarkContents(readWell(composeBookmark(contents).value())) == contents);
        EXPECT_TRUE(bookmarkContents(readWell(composeAliasFile(contents, Date(0)).value())) == contents);
    }
}

TEST(BookmarkComposer, leavesOutNumbersOfNoComponents) {
    BookmarkContents contents;
    contents.pathComponents.emplace();
    contents.fileIDs.emplace();
    const BookmarkStructure structure = readWell(composeBookmark(contents).value());
    ASSERT_EQ(structure.tables.front().items.size(), 1U);
    EXPECT_EQ(structure.tables.front().items.front().key, bookmark_key::pathComponents);
}

TEST(BookmarkComposer, refusesComponentsThatNoItemCanHave) {
    using namespace std::string_literals;
    for (const std::string& component : {""s, "."s, "a/b"s, "/"s, "a\0b"s}) {
        BookmarkContents contents = noteContents();
        contents.pathComponents->back() = component;
        EXPECT_EQ(refusalOf(contents), "a component of the path names no item");
    }
}

TEST(BookmarkComposer, refusesTextThatIsNotUtf8WhereverItStands) {
    using Change = void (*)(BookmarkContents&);
    for (const Change change : std::initializer_list<Change>{
             [](BookmarkContents& contents) { contents.pathComponents->front() = "caf\xE9"; },
             [](BookmarkContents& contents) { contents.fileName = "\xFF"; },
             [](BookmarkContents& contents) { contents.userName = "\xFF"; },
             [](BookmarkContents& contents) { contents.displayName = "\xFF"; },
             [](BookmarkContents& contents) { contents.volume.path = "\xFF"; },
             [](BookmarkContents& contents) { contents.volume.url = "file:///\xFF"; },
             [](BookmarkContents& contents) { contents.volume.name = "\xFF"; },
             [](BookmarkContents& contents) { contents.volume.uuid = "\xFF"; },
             [](BookmarkContents& contents) { contents.volume.mountURL = "smb://\xFF"; },
             [](BookmarkContents& contents) { contents.rootVolume->name = "\xFF"; },
             [](BookmarkContents& contents) { contents.volumesBetween.emplace_back().name = "\xFF"; }}) {
        BookmarkContents contents = shareContents();
        change(contents);
        EXPECT_EQ(refusalOf(contents), "a text is not UTF-8");
    }
}

TEST(BookmarkComposer, refusesURLsThatAreNone) {
    BookmarkContents contents;
    contents.url = "no URL";
    EXPECT_FALSE(composeBookmark(contents));
    contents = shareContents();
    contents.volume.mountURL = "server";
    EXPECT_EQ(refusalOf(contents), "the URL of a volume is not a URL");
    contents = shareContents();
    contents.rootVolume->url = "/";
    EXPECT_EQ(refusalOf(contents), "the URL of a volume is not a URL");
}

TEST(BookmarkComposer, refusesListsThatDoNotMatchThePath) {
    BookmarkContents contents = noteContents();
    contents.fileIDs->pop_back();
    EXPECT_EQ(refusalOf(contents), "there is not one file number for each component of the path");

    contents = shareContents();
    contents.volumeDepths.pop_back();
    EXPECT_EQ(
        refusalOf(contents), "there is not one volume depth for each component of the path and one more");

    contents = shareContents();
    contents.rootVolume.reset();
    EXPECT_EQ(refusalOf(contents), "the root volume and the volume depths are not given together");
}

TEST(BookmarkComposer, refusesToClaimASecurityScope) {
    for (const std::uint32_t option : {0x800U, 0x1000U, 0x0800'0000U, 0x2800'0800U}) {
        BookmarkContents contents = noteContents();
        contents.options = option;
        EXPECT_EQ(refusalOf(contents), "the options claim a security scope") << option;
    }
}

TEST(BookmarkComposer, refusesPathsBeyondAllMeasure) {
    BookmarkContents contents;
    contents.pathComponents.emplace((1U << 20U) + 1, "a");
    EXPECT_EQ(refusalOf(contents), "the path has too many components for a bookmark");

    contents.pathComponents.emplace(2, std::string(1U << 27U, 'a'));
    contents.displayName = "a";
    EXPECT_EQ(refusalOf(contents), "the texts are too long for a bookmark");
}

} // namespace
} // namespace tolvane::platform
