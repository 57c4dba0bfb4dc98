#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string layerUuid = bytesOfHex("00112233 4455 6677 8899 AABBCCDDEEFF");

std::string fileHandle(unsigned type, const std::string& file, unsigned flags = 0) {
    std::string body = littleEndian(flags, 1) + littleEndian(type, 1) + layerUuid + file;
    return bytesOfHex("00FB") + littleEndian(body.size() + 3, 1) + body;
}

TEST(Overlay, hasTheFileThatWasCopiedUp) {
    const std::string value = fileHandle(1, littleEndian(42, 4) + littleEndian(7, 4));
    EXPECT_EQ(value.size(), 29U);
    EXPECT_THAT(
        explainedLines("trusted.overlay.origin", value),
        ElementsAre(
            "Inode: 42", "Generation: 7", "File system: 00112233-4455-6677-8899-AABBCCDDEEFF",
            "Handle type: 1", "Flags: none (0x00)"));
    expectEveryCutRefused("user.overlay.origin", value);
    EXPECT_THAT(
        explainedLines(
            "trusted.overlay.upper", fileHandle(0x81, littleEndian(1ULL << 40U, 8) + littleEndian(1, 4), 4)),
        testing::Contains("Inode: 1099511627776"));
    EXPECT_THAT(explainedLines("trusted.overlay.overlay.origin", fileHandle(0x4D, "abc"))[0], "File: 616263");
}

TEST(Overlay, hasAMarkForMetadataAlone) {
    EXPECT_THAT(explainedSummary("trusted.overlay.metacopy", ""), HasSubstr("only the metadata is here"));
    EXPECT_THAT(
        explainedLines("trusted.overlay.metacopy", bytesOfHex("00 06 00 01 aabb")),
        ElementsAre("Flags: 0x00", "Digest of the content: SHA-256 (1)", "Digest: aabb"));
    EXPECT_NE(complaintAbout("trusted.overlay.metacopy", bytesOfHex("00 07 00 01 aabb")), "");
}

TEST(Overlay, hasTheLinkCountsDifference) {
    EXPECT_EQ(
        explainedSummary("trusted.overlay.nlink", "L-12"),
        "Overlay: the link count is that of the lower layer's file, minus 12.");
    EXPECT_EQ(explained("trusted.overlay.nlink", "U+0").fields[1].value, platform::Value(std::int64_t{0}));
    EXPECT_EQ(explained("trusted.overlay.nlink", "L-12").fields[1].value, platform::Value(std::int64_t{-12}));
    for (const char* const wrong : {"", "U", "U+", "X+1", "U1", "U+1x", "U+-1", "U--1"}) {
        EXPECT_NE(complaintAbout("trusted.overlay.nlink", wrong), "") << wrong;
    }
}

TEST(Overlay, hasASentenceForEachMark) {
    EXPECT_THAT(
        explainedSummary("user.fuseoverlayfs.opaque", "y"), HasSubstr("hides what lower layers have"));
    EXPECT_THAT(
        explainedSummary("trusted.overlay.opaque", "x"),
        HasSubstr("marks of deleted items that are attributes"));
    EXPECT_THAT(explainedLines("trusted.overlay.redirect", "/a/b"), ElementsAre("Path: /a/b"));
    EXPECT_THAT(
        explainedLines("trusted.overlay.protattr", "ia"), ElementsAre("Immutable: yes", "Append only: yes"));
    EXPECT_THAT(complaintAbout("trusted.overlay.protattr", "ix"), HasSubstr("at byte 1"));
    EXPECT_THAT(
        explainedLines("trusted.overlay.uuid", layerUuid),
        ElementsAre("File system: 00112233-4455-6677-8899-AABBCCDDEEFF"));
    EXPECT_NE(complaintAbout("trusted.overlay.uuid", "x"), "");
    EXPECT_THAT(explainedSummary("trusted.overlay.whiteout", ""), HasSubstr("was deleted"));
}

} // namespace
} // namespace tolvane::tests
