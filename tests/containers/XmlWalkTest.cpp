#include "containers/XmlWalk.h"

#include "platform/values/HexDigits.h"
#include "tests/containers/Samples.h"
#include "tests/support/AliasRecords.h"

namespace tolvane::containers {
namespace {

using namespace tests;

std::string noteBase64() {
    return base64Of(corpusText("note.bookmark"));
}

TEST(XmlWalk, findsTheTextsOfElements) {
    const auto found = foundIn(
        "<?xml version=\"1.0\"?><fcpxml><asset/><asset><media-rep src=\"file:///Users/demo/note.txt\">"
        "<bookmark>\n  "
        + noteBase64() + "\n</bookmark></media-rep></asset></fcpxml>");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->container, "xml");
    ASSERT_EQ(found->findings.size(), 1U);
    EXPECT_EQ(found->findings[0].where, "/fcpxml[0]/asset[1]/media-rep[0]/bookmark[0]");
    EXPECT_EQ(found->findings[0].neighbour, "file:///Users/demo/note.txt");
    EXPECT_EQ(found->findings[0].mismatch, false);
}

TEST(XmlWalk, marksMediaThatAreSomewhereElse) {
    const Finding finding = onlyFindingIn(
        "<?xml version=\"1.0\"?><a src=\"file:///Users/demo/other.txt\"><b>" + noteBase64() + "</b></a>");
    EXPECT_EQ(finding.mismatch, true);
}

TEST(XmlWalk, findsHexadecimalAliasesBrokenIntoLines) {
    std::string digits;
    for (const std::byte byte : writtenAlias(noteAlias())) {
        platform::appendHex(digits, std::to_integer<unsigned>(byte), 2, platform::HexCase::upper);
        if (digits.size() % 41 < 2) {
            digits += "\n\t\t";
        }
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
    ASSERT_EQ(found->complaints.size(), 1U);
    EXPECT_TRUE(found->complaints[0].starts_with("The document cannot be read further: "));
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
    ASSERT_FALSE(collector.complaints().empty());
    EXPECT_EQ(collector.complaints()[0], "The document is not read further: elements more than 256 deep.");
}

TEST(XmlWalk, leavesDocumentsWithoutBookmarksAlone) {
    EXPECT_FALSE(foundIn("<?xml version=\"1.0\"?><a><b>text</b></a>"));
    EXPECT_FALSE(foundIn("<?xml version=\"1.0\"?><a><b>broken"));
}

} // namespace
} // namespace tolvane::containers
