#include "containers/Collector.h"

#include "tests/containers/Samples.h"

namespace tolvane::containers {
namespace {

using namespace tests;
using platform::Data;
using testing::ElementsAre;
using testing::StartsWith;

/// What the bytes at "/a" become.
Finding findingOf(const Data& bytes) {
    Collector collector;
    EXPECT_TRUE(collector.add(bytes, "/a"));
    return collector.findings().at(0);
}

TEST(Collector, describesABookmark) {
    const Finding finding = findingOf(noteData());
    EXPECT_EQ(finding.kind, FindingKind::bookmark);
    EXPECT_EQ(finding.where, "/a");
    EXPECT_EQ(finding.bytes, noteData());
    EXPECT_EQ(finding.version, 0x1004'0000U);
    EXPECT_EQ(finding.path, "/Users/demo/note.txt");
    EXPECT_FALSE(finding.url);
    EXPECT_EQ(finding.volumeName, "Test Disk");
    EXPECT_EQ(finding.volumeUUID, "11111111-2222-3333-4444-555555555555");
    EXPECT_EQ(finding.created->description(), "2023-03-08 20:26:40 +0000");
    EXPECT_FALSE(finding.createdLocal);
    EXPECT_FALSE(finding.mismatch);
    EXPECT_TRUE(finding.isReadable);
    EXPECT_TRUE(finding.warnings.empty());
}

TEST(Collector, describesABookmarkOfAURL) {
    platform::SectionComposer composer;
    const std::uint32_t url = composer.addURL("smb://server/share");
    const Finding finding = findingOf(bookmarkWithItems(composer, {{0x1003, url, 0}}));
    EXPECT_EQ(finding.url, "smb://server/share");
    EXPECT_FALSE(finding.path);
}

TEST(Collector, describesAnAliasRecord) {
    const Finding second = findingOf(writtenAlias(noteAlias(2)));
    EXPECT_EQ(second.kind, FindingKind::alias);
    EXPECT_EQ(second.version, 2U);
    EXPECT_EQ(second.path, "/Volumes/Disk/folder/note.txt");
    EXPECT_EQ(second.volumeName, "Disk");
    EXPECT_EQ(second.name, "note.txt");
    EXPECT_EQ(second.createdLocal->description(), "2018-01-28 16:00:00 +0000");
    EXPECT_FALSE(second.created);
    const Finding third = findingOf(writtenAlias(noteAlias(3)));
    EXPECT_EQ(third.version, 3U);
    EXPECT_TRUE(third.created);
    EXPECT_FALSE(third.createdLocal);
}

TEST(Collector, prefersTheNameInTheContainer) {
    Collector collector;
    collector.add(writtenAlias(noteAlias()), "", {"My note", std::nullopt});
    collector.add(writtenAlias(noteAlias()), "", {"", std::nullopt});
    EXPECT_EQ(collector.findings()[0].name, "My note");
    EXPECT_EQ(collector.findings()[1].name, "note.txt");
}

TEST(Collector, marksANeighbourThatNamesAnotherItem) {
    Collector collector;
    collector.add(noteData(), "", {std::nullopt, "file:///Users/demo/note.txt"});
    collector.add(noteData(), "", {std::nullopt, "file:///Applications/Other.app/"});
    collector.add(noteData(), "", {std::nullopt, "https://example.org/"});
    EXPECT_EQ(collector.findings()[0].mismatch, false);
    EXPECT_EQ(collector.findings()[1].mismatch, true);
    EXPECT_EQ(collector.findings()[1].neighbour, "file:///Applications/Other.app/");
    EXPECT_EQ(collector.findings()[2].mismatch, std::nullopt);
}

TEST(Collector, keepsWhatLooksLikeABookmarkButCannotBeRead) {
    const Finding cut = findingOf(front(noteData(), 647));
    EXPECT_FALSE(cut.isReadable);
    EXPECT_FALSE(cut.path);
    EXPECT_THAT(cut.warnings, ElementsAre(StartsWith("Not a readable bookmark: expected")));
    const Finding damaged = findingOf(withByte(writtenAlias(noteAlias()), 152, 0xFF));
    EXPECT_THAT(damaged.warnings, ElementsAre(StartsWith("Not a readable alias record: expected")));
}

TEST(Collector, refusesOtherBytes) {
    Collector collector;
    EXPECT_FALSE(collector.add(Data(), ""));
    EXPECT_FALSE(collector.add(bytesOf("book"), ""));
    EXPECT_FALSE(
        collector.add(bytesOf("bookkeeping is a word, and there are many more words after it."), ""));
    EXPECT_FALSE(collector.add(Data(200), ""));
    EXPECT_TRUE(collector.findings().empty());
}

TEST(Collector, keepsALimitedLengthAndSaysSo) {
    constexpr std::size_t most = 5'000;
    Collector collector({}, most);
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(collector.isFull());
        EXPECT_TRUE(collector.add(noteData(), "/a", {std::string(1'500, 'n'), std::nullopt}));
    }
    EXPECT_TRUE(collector.isFull());
    EXPECT_TRUE(collector.add(noteData(), "/b"));
    collector.complain("Not kept either.");
    EXPECT_EQ(collector.findings().size(), 3U);
    EXPECT_THAT(
        collector.complaints(),
        ElementsAre("Only the first 3 findings are listed; what follows them was not searched."));
}

TEST(Collector, keepsALimitedNumberAndSaysSo) {
    Collector collector;
    for (std::size_t i = 0; i < mostFindings + 2; ++i) {
        collector.add(Finding());
    }
    EXPECT_TRUE(collector.isFull());
    EXPECT_EQ(collector.findings().size(), mostFindings);
    EXPECT_THAT(
        collector.complaints(),
        ElementsAre("Only the first 100000 findings are listed; what follows them was not searched."));
}

} // namespace
} // namespace tolvane::containers
