#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

TEST(AfpInfo, hasFinderInformationAndTheDateOfABackup) {
    const std::string value = std::string("AFP\0", 4) + big<4>(0x10000, 0, 60)
                              + finderInfoOfFile("TEXT", "ttxt", 0x000C) + bytesOfHex("000000000001")
                              + zeros(6);
    expectLines(
        "user.DosStream.AFP_AfpInfo:$DATA", value + zeros(1),
        {"Type: TEXT", "Creator: ttxt", "Flags: none (0x000c)", "Label: red (6)",
         "Backup: 2000-01-01 00:01:00 UTC", "Version: 0x00010000", "ProDOS: 000000000001"});
    expectEveryCutRefused("AFP_AfpInfo", value);
}

TEST(SambaStreamPart, namesItsStream) {
    const char* const name = "user.DosStreamExt.2.a.b:$DATA";
    expectLines(name, "xyz", {"Stream: a.b", "Index: 2", "Part: 78797a"});
    EXPECT_EQ(
        explainedSummary(name, "xyz"),
        "Further part of the stream a.b, which is too long for one attribute; Samba keeps it.");
    expectRefused("user.DosStreamExt.x.a", {"xyz"});
    expectRefused("user.DosStreamExt.2", {"xyz"});
}

TEST(SambaPai, hasEntriesOfEitherVersion) {
    const std::string second = bytesOfHex("02 0410") + little<2>(1, 1) + bytesOfHex("0300") + little<4>(1000)
                               + bytesOfHex("0002") + little<4>(0);
    expectRecord(
        "user.SAMBA_PAI", second,
        {"Version: 2", "Descriptor type: 0x1004", "Inherited entry: user 1000, flags 0x03",
         "Default entry: everyone"});
    const std::string first = bytesOfHex("01 01") + little<2>(1, 0) + bytesOfHex("01") + little<4>(20);
    expectLines("user.SAMBA_PAI", first, {"Version: 1", "Protected: yes", "Inherited entry: group 20"});
    expectRefused("user.SAMBA_PAI", {"\x03" + first.substr(1)});
}

} // namespace
} // namespace tolvane::tests
