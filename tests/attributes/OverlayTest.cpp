#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

const std::string layerUuid = bytesOfHex("00112233 4455 6677 8899 AABBCCDDEEFF");

std::string fileHandle(unsigned type, const std::string& file, unsigned flags = 0) {
    std::string body = little<1>(flags, type) + layerUuid + file;
    return bytesOfHex("00FB") + little<1>(body.size() + 3) + body;
}

TEST(Overlay, hasTheFileThatWasCopiedUp) {
    const std::string value = fileHandle(1, little<4>(42, 7));
    EXPECT_EQ(value.size(), 29U);
    expectLines(
        "trusted.overlay.origin", value,
        {"Inode: 42", "Generation: 7", "File system: 00112233-4455-6677-8899-AABBCCDDEEFF", "Handle type: 1",
         "Flags: none (0x00)"});
    expectEveryCutRefused("user.overlay.origin", value);
    EXPECT_THAT(
        explainedLines("trusted.overlay.upper", fileHandle(0x81, little<8>(1ULL << 40U) + little<4>(1), 4)),
        testing::Contains("Inode: 1099511627776"));
    EXPECT_THAT(explainedLines("trusted.overlay.overlay.origin", fileHandle(0x4D, "abc"))[0], "File: 616263");
}

TEST(Overlay, hasAMarkForMetadataAlone) {
    EXPECT_THAT(explainedSummary("trusted.overlay.metacopy", ""), HasSubstr("only the metadata is here"));
    expectLines(
        "trusted.overlay.metacopy", bytesOfHex("00 06 00 01 aabb"),
        {"Flags: 0x00", "Digest of the content: SHA-256 (1)", "Digest: aabb"});
    expectRefused("trusted.overlay.metacopy", {bytesOfHex("00 07 00 01 aabb")});
}

TEST(Overlay, hasTheLinkCountsDifference) {
    EXPECT_EQ(
        explainedSummary("trusted.overlay.nlink", "L-12"),
        "Overlay: the link count is that of the lower layer's file, minus 12.");
    EXPECT_EQ(explained("trusted.overlay.nlink", "U+0").fields[1].value, platform::Value(std::int64_t{0}));
    EXPECT_EQ(explained("trusted.overlay.nlink", "L-12").fields[1].value, platform::Value(std::int64_t{-12}));
    expectRefused("trusted.overlay.nlink", {"", "U", "U+", "X+1", "U1", "U+1x", "U+-1", "U--1"});
}

TEST(Overlay, hasASentenceForEachMark) {
    EXPECT_THAT(
        explainedSummary("user.fuseoverlayfs.opaque", "y"), HasSubstr("hides what lower layers have"));
    EXPECT_THAT(
        explainedSummary("trusted.overlay.opaque", "x"),
        HasSubstr("marks of deleted items that are attributes"));
    expectLines("trusted.overlay.redirect", "/a/b", {"Path: /a/b"});
    expectLines("trusted.overlay.protattr", "ia", {"Immutable: yes", "Append only: yes"});
    EXPECT_THAT(complaintAbout("trusted.overlay.protattr", "ix"), HasSubstr("at byte 1"));
    expectLines("trusted.overlay.uuid", layerUuid, {"File system: 00112233-4455-6677-8899-AABBCCDDEEFF"});
    expectRefused("trusted.overlay.uuid", {"x"});
    EXPECT_THAT(explainedSummary("trusted.overlay.whiteout", ""), HasSubstr("was deleted"));
}

} // namespace
} // namespace tolvane::tests
