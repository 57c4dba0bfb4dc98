#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/PropertyListWriters.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(LastUsedDate, isSecondsAndNanoseconds) {
    const std::string value = littleEndian(1'700'000'000, 8) + littleEndian(1, 8);
    EXPECT_THAT(
        explainedLines("com.apple.lastuseddate", value),
        ElementsAre("Last used: 2023-11-14 22:13:20.000000001 UTC"));
    expectEveryCutRefused("com.apple.lastuseddate", value);
    EXPECT_NE(
        complaintAbout("com.apple.lastuseddate", littleEndian(0, 8) + littleEndian(1'000'000'000, 8)), "");
    EXPECT_THAT(
        explainedLines("com.apple.lastuseddate", std::string(8, '\xFF') + littleEndian(0, 8)),
        ElementsAre("Last used: 1969-12-31 23:59:59 UTC"));
}

TEST(Provenance, hasTheApplicationsNumber) {
    const std::string value = bytesOfHex("010200") + littleEndian(0x215f3c77fa224a50, 8);
    EXPECT_THAT(
        explainedLines("com.apple.provenance", value),
        ElementsAre("Application: 0x215f3c77fa224a50", "Prefix: 010200"));
    expectEveryCutRefused("com.apple.provenance", value);
    EXPECT_THAT(
        explained("com.apple.provenance", value + std::string(3, '\0')).notes,
        ElementsAre("3 zero bytes at the end"));
    EXPECT_NE(complaintAbout("com.apple.provenance", value + "x"), "");
}

TEST(AllowedApplications, areInFourSlots) {
    const std::string slot = bytesOfHex("0740 00112233445566778899AABBCCDDEEFF");
    EXPECT_THAT(
        explainedLines("com.apple.macl", slot + std::string(54, '\0')),
        ElementsAre("Allowed application: 00112233-4455-6677-8899-AABBCCDDEEFF, mark 0740"));
    EXPECT_THAT(
        explainedSummary("com.apple.macl", slot + slot + std::string(36, '\0')), HasSubstr("2 of 4 slots"));
    EXPECT_NE(complaintAbout("com.apple.macl", slot), "");
}

TEST(CompressedFile, hasItsTypeAndSize) {
    const std::string value = "fpmc" + littleEndian(3, 4) + littleEndian(1000, 8);
    EXPECT_THAT(
        explainedLines("com.apple.decmpfs", value + "xyz"),
        ElementsAre(
            "Compression: zlib, stored here (3)", "Uncompressed size: 1000 bytes", "Stored here: 3 bytes"));
    expectEveryCutRefused("com.apple.decmpfs", value);
    EXPECT_THAT(
        linesOf(explained(
            "com.apple.decmpfs", "fpmc" + littleEndian(0x80000001, 4) + littleEndian(5ULL << 40U | 9, 8),
            {{}, platform::ItemKind::folder})),
        ElementsAre(
            "Compression: content is fetched when read (2147483649)", "Uncompressed size: 9 bytes",
            "Children: 5"));
}

TEST(CodeSignature, hasItsPart) {
    const std::string value = bigEndian(0xFADE7171, 4) + bigEndian(12, 4) + "<a/>";
    EXPECT_THAT(
        explainedLines("com.apple.cs.CodeEntitlements", value),
        ElementsAre("Part: entitlements (0xfade7171)", "Length: 12 bytes", "Entitlements: <a/>"));
    expectEveryCutRefused("com.apple.cs.CodeEntitlements", value);
    EXPECT_NE(complaintAbout("com.apple.cs.CodeSignature", bigEndian(1, 4) + bigEndian(8, 4)), "");
}

TEST(DiskImageChecksum, hasItsTime) {
    EXPECT_THAT(
        explainedLines(
            "com.apple.diskimages.recentcksum",
            "i:12 on FEF3D94D-BBE2-3ACF-87A6-F4D60027B398 @ 1700000000 - CRC32:$00FF00FF"),
        ElementsAre(
            "Checked: 2023-11-14 22:13:20 UTC", "Algorithm: CRC32", "Checksum: 00FF00FF", "File number: 12",
            "Volume: FEF3D94D-BBE2-3ACF-87A6-F4D60027B398"));
    for (const char* const wrong :
         {"", "i:12 on V @ T - C:$1", "i:x on V @ 1 - C:$1", "i:1 on V @ 1 - C", "i:1 in V @ 1 - C:$1"}) {
        EXPECT_NE(complaintAbout("com.apple.diskimages.recentcksum", wrong), "") << wrong;
    }
}

TEST(TextEncoding, isANameAndANumber) {
    EXPECT_THAT(
        explainedLines("com.apple.TextEncoding", "iso-8859-15;527"),
        ElementsAre("Name: iso-8859-15", "Number: ISO 8859-15 (0x20f)"));
    EXPECT_THAT(explainedLines("com.apple.TextEncoding", ";0"), ElementsAre("Number: Mac Roman (0x0)"));
    EXPECT_THAT(explainedSummary("com.apple.TextEncoding", "utf-8;"), HasSubstr("saved the text: utf-8."));
    EXPECT_THAT(explainedSummary("com.apple.TextEncoding", ";"), HasSubstr("not stated"));
    EXPECT_THAT(explainedSummary("com.apple.TextEncoding", "x;99999"), HasSubstr("saved the text: x."));
    EXPECT_THAT(complaintAbout("com.apple.TextEncoding", "UTF-8;x"), HasSubstr("at byte 6"));
    EXPECT_NE(complaintAbout("com.apple.TextEncoding", "a;1;2"), "");
}

} // namespace
} // namespace tolvane::tests
