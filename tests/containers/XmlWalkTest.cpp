#include "containers/XmlWalk.h"

#include "tests/containers/Samples.h"

namespace tolvane::containers {
namespace {

using namespace tests;

TEST(XmlWalk, findsTheTextsOfElements) {
    const std::string document =
        "<?xml version=\"1.0\"?><fcpxml><asset/><asset><media-rep src=\"file:///Users/demo/note.txt\">"
        "<bookmark>\n  "
        + noteBase64() + "\n</bookmark></media-rep></asset></fcpxml>";
    EXPECT_THAT(
        outlineOf(document), testing::ElementsAre("xml", "/fcpxml[0]/asset[1]/media-rep[0]/bookmark[0]"));
    EXPECT_EQ(onlyFindingIn(document).neighbour, "file:///Users/demo/note.txt");
    EXPECT_EQ(onlyFindingIn(document).mismatch, false);
}

TEST(XmlWalk, marksMediaThatAreSomewhereElse) {
    const Finding finding = onlyFindingIn(
        "<?xml version=\"1.0\"?><a src=\"file:///Users/demo/other.txt\"><b>" + noteBase64() + "</b></a>");
    EXPECT_EQ(finding.mismatch, true);
}

TEST(XmlWalk, findsHexadecimalAliasesBrokenIntoLines) {
    std::string digits = hexOf(writtenAlias(noteAlias()), platform::HexCase::upper);
    for (std::size_t at = 40; at < digits.size(); at += 43) {
        digits.insert(at, "\n\t\t");
    }
    const Finding finding =
        onlyFindingIn("<?xml version=\"1.0\"?><FileRef><Data>" + digits + "</Data></FileRef>");
    EXPECT_EQ(finding.kind, FindingKind::alias);
    EXPECT_EQ(finding.path, "/Volumes/Disk/folder/note.txt");
}

TEST(XmlWalk, keepsWhatStandsBeforeTheDocumentBreaksOff) {
    const auto found = foundIn("<?xml version=\"1.0\"?><a><b>" + noteBase64() + "</b><c");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->findings.size(), 1U);
    EXPECT_THAT(
        found->complaints,
        testing::ElementsAre(testing::StartsWith("The document cannot be read further: ")));
}

TEST(XmlWalk, doesNotReadDocumentsThatDeclareEntities) {
    Collector collector;
    collectFromXml(
        "<?xml version=\"1.0\"?><!DOCTYPE a [<!ENTITY e \"x\">]><a>" + noteBase64() + "</a>", collector);
    EXPECT_TRUE(collector.findings().empty());
    EXPECT_FALSE(collector.complaints().empty());
}

TEST(XmlWalk, isNotDeeperThanALimit) {
    std::string text = "<?xml version=\"1.0\"?>";
    for (int i = 0; i < 300; ++i) {
        text += "<a>";
    }
    Collector collector;
    collectFromXml(text, collector);
    EXPECT_EQ(collector.complaints().at(0), "The document is not read further: elements more than 256 deep.");
}

TEST(XmlWalk, leavesDocumentsWithoutBookmarksAlone) {
    EXPECT_FALSE(foundIn("<?xml version=\"1.0\"?><a><b>text</b></a>"));
    EXPECT_FALSE(foundIn("<?xml version=\"1.0\"?><a><b>broken"));
}

} // namespace
} // namespace tolvane::containers
