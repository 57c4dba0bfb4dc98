#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/PropertyListWriters.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;

TEST(AfpInfo, hasFinderInformationAndTheDateOfABackup) {
    const std::string value = std::string("AFP\0", 4) + bigEndian(0x10000, 4) + bigEndian(0, 4)
                              + bigEndian(60, 4) + finderInfoOfFile("TEXT", "ttxt", 0x000C)
                              + bytesOfHex("000000000001") + std::string(6, '\0');
    EXPECT_THAT(
        explainedLines("user.DosStream.AFP_AfpInfo:$DATA", value + std::string(1, '\0')),
        ElementsAre(
            "Type: TEXT", "Creator: ttxt", "Flags: none (0x000c)", "Label: red (6)",
            "Backup: 2000-01-01 00:01:00 UTC", "Version: 0x00010000", "ProDOS: 000000000001"));
    expectEveryCutRefused("AFP_AfpInfo", value);
}

TEST(SambaStreamPart, namesItsStream) {
    const char* const name = "user.DosStreamExt.2.a.b:$DATA";
    EXPECT_THAT(explainedLines(name, "xyz"), ElementsAre("Stream: a.b", "Index: 2", "Part: 78797a"));
    EXPECT_EQ(
        explainedSummary(name, "xyz"),
        "Further part of the stream a.b, which is too long for one attribute; Samba keeps it.");
    EXPECT_NE(complaintAbout("user.DosStreamExt.x.a", "xyz"), "");
    EXPECT_NE(complaintAbout("user.DosStreamExt.2", "xyz"), "");
}

TEST(SambaPai, hasEntriesOfEitherVersion) {
    const std::string second = bytesOfHex("02 0410") + littleEndian(1, 2) + littleEndian(1, 2)
                               + bytesOfHex("0300") + littleEndian(1000, 4) + bytesOfHex("0002")
                               + littleEndian(0, 4);
    EXPECT_THAT(
        explainedLines("user.SAMBA_PAI", second),
        ElementsAre(
            "Version: 2", "Descriptor type: 0x1004", "Inherited entry: user 1000, flags 0x03",
            "Default entry: everyone"));
    expectEveryCutRefused("user.SAMBA_PAI", second);
    const std::string first = bytesOfHex("01 01") + littleEndian(1, 2) + littleEndian(0, 2) + bytesOfHex("01")
                              + littleEndian(20, 4);
    EXPECT_THAT(
        explainedLines("user.SAMBA_PAI", first),
        ElementsAre("Version: 1", "Protected: yes", "Inherited entry: group 20"));
    EXPECT_NE(complaintAbout("user.SAMBA_PAI", "\x03" + first.substr(1)), "");
}

} // namespace
} // namespace tolvane::tests
