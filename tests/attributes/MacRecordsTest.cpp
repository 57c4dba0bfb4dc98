#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(LastUsedDate, isSecondsAndNanoseconds) {
    const std::string value = little<8>(1'700'000'000, 1);
    expectRecord("com.apple.lastuseddate", value, {"Last used: 2023-11-14 22:13:20.000000001 UTC"});
    expectRefused("com.apple.lastuseddate", {little<8>(0, 1'000'000'000)});
    expectLines(
        "com.apple.lastuseddate", std::string(8, '\xFF') + little<8>(0),
        {"Last used: 1969-12-31 23:59:59 UTC"});
}

TEST(Provenance, hasTheApplicationsNumber) {
    const std::string value = bytesOfHex("010200") + little<8>(0x215f3c77fa224a50);
    expectRecord("com.apple.provenance", value, {"Application: 0x215f3c77fa224a50", "Prefix: 010200"});
    EXPECT_THAT(
        explained("com.apple.provenance", value + zeros(3)).notes, ElementsAre("3 zero bytes at the end"));
    expectRefused("com.apple.provenance", {value + "x"});
}

TEST(AllowedApplications, areInFourSlots) {
    const std::string slot = bytesOfHex("0740 00112233445566778899AABBCCDDEEFF");
    expectLines(
        "com.apple.macl", slot + zeros(54),
        {"Allowed application: 00112233-4455-6677-8899-AABBCCDDEEFF, mark 0740"});
    EXPECT_THAT(explainedSummary("com.apple.macl", slot + slot + zeros(36)), HasSubstr("2 of 4 slots"));
    expectRefused("com.apple.macl", {slot});
}

TEST(CompressedFile, hasItsTypeAndSize) {
    const std::string value = "fpmc" + little<4>(3) + little<8>(1000);
    expectLines(
        "com.apple.decmpfs", value + "xyz",
        {"Compression: zlib, stored here (3)", "Uncompressed size: 1000 bytes", "Stored here: 3 bytes"});
    expectEveryCutRefused("com.apple.decmpfs", value);
    expectLines(
        "com.apple.decmpfs", "fpmc" + little<4>(0x80000001) + little<8>(5ULL << 40U | 9),
        {"Compression: content is fetched when read (2147483649)", "Uncompressed size: 9 bytes",
         "Children: 5"},
        {{}, platform::ItemKind::folder});
}

TEST(CodeSignature, hasItsPart) {
    const std::string value = big<4>(0xFADE7171, 12) + "<a/>";
    expectRecord(
        "com.apple.cs.CodeEntitlements", value,
        {"Part: entitlements (0xfade7171)", "Length: 12 bytes", "Entitlements: <a/>"});
    expectRefused("com.apple.cs.CodeSignature", {big<4>(1, 8)});
}

TEST(DiskImageChecksum, hasItsTime) {
    expectLines(
        "com.apple.diskimages.recentcksum",
        "i:12 on FEF3D94D-BBE2-3ACF-87A6-F4D60027B398 @ 1700000000 - CRC32:$00FF00FF",
        {"Checked: 2023-11-14 22:13:20 UTC", "Algorithm: CRC32", "Checksum: 00FF00FF", "File number: 12",
         "Volume: FEF3D94D-BBE2-3ACF-87A6-F4D60027B398"});
    expectRefused(
        "com.apple.diskimages.recentcksum",
        {"", "i:12 on V @ T - C:$1", "i:x on V @ 1 - C:$1", "i:1 on V @ 1 - C", "i:1 in V @ 1 - C:$1"});
}

TEST(TextEncoding, isANameAndANumber) {
    expectLines(
        "com.apple.TextEncoding", "iso-8859-15;527", {"Name: iso-8859-15", "Number: ISO 8859-15 (0x20f)"});
    expectLines("com.apple.TextEncoding", ";0", {"Number: Mac Roman (0x0)"});
    EXPECT_THAT(explainedSummary("com.apple.TextEncoding", "utf-8;"), HasSubstr("saved the text: utf-8."));
    EXPECT_THAT(explainedSummary("com.apple.TextEncoding", ";"), HasSubstr("not stated"));
    EXPECT_THAT(explainedSummary("com.apple.TextEncoding", "x;99999"), HasSubstr("saved the text: x."));
    EXPECT_THAT(complaintAbout("com.apple.TextEncoding", "UTF-8;x"), HasSubstr("at byte 6"));
    expectRefused("com.apple.TextEncoding", {"a;1;2"});
}

} // namespace
} // namespace tolvane::tests
