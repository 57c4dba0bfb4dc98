#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::Contains;
using testing::HasSubstr;

const WindowsAccount administrators{5, {32, 544}};
const WindowsAccount everyone{1, {0}};
const WindowsAccount unixGroup{22, {2, 100}};

TEST(SecurityDescriptor, namesAccountsThatAreTheSameEverywhere) {
    const std::string value = securityDescriptor(
        administrators, unixGroup,
        {{0, 0, 0x001F01FF, everyone},
         {1, 0x13, 0x00010000, {5, {21, 1, 2, 3, 500}}},
         {0, 0, 0x00120089, {22, {1, 1000}}}});
    expectLines(
        "system.ntfs_acl", value,
        {"Owner: S-1-5-32-544 (Administrators)", "Group: S-1-22-2-100 (Unix group g100)",
         "Control: access list present, self-relative (0x8004)",
         "Access: allow S-1-1-0 (Everyone): full control (0x001f01ff)",
         "Access: deny S-1-5-21-1-2-3-500 (Administrator): delete (0x00010000); files inherit, folders "
         "inherit, was inherited",
         "Access: allow S-1-22-1-1000 (Unix user u1000): read (0x00120089)"},
        knownAccounts());
    expectEveryCutRefused("system.cifs_acl", value);
}

TEST(SecurityDescriptor, keepsEntriesOfOtherKindsAsBytes) {
    EXPECT_THAT(
        explainedLines("system.ntfs_acl", securityDescriptor(everyone, everyone, {{5, 0, 1, everyone}})),
        Contains("Access: entry of type 5, not taken apart"));
}

TEST(SecurityDescriptor, mayHaveNoList) {
    const std::string noList = bytesOfHex("01000480 00000000 00000000 00000000 00000000");
    EXPECT_THAT(
        explainedLines("system.ntfs_acl", noList), Contains("Access: everybody may do everything (no list)"));
    const std::string unstated = bytesOfHex("01000080 00000000 00000000 00000000 00000000");
    EXPECT_THAT(explainedLines("system.ntfs_acl", unstated), Contains("Access: no list is stated"));
}

TEST(SecurityDescriptor, isRefusedWhereSomethingLiesOutside) {
    std::string value = securityDescriptor(everyone, everyone, {{0, 0, 1, everyone}});
    std::string far = value;
    far[4] = '\xF0';
    EXPECT_THAT(complaintAbout("system.ntfs_acl", far), HasSubstr("a security identifier"));
    std::string longEntry = value;
    longEntry[20 + 12 + 12 + 8 + 2] = '\x7F';
    EXPECT_THAT(
        complaintAbout("system.ntfs_acl", longEntry), HasSubstr("an entry of the access control list"));
    std::string manyEntries = value;
    manyEntries[20 + 12 + 12 + 4] = '\x09';
    expectRefused("system.ntfs_acl", {manyEntries});
    value[0] = '\2';
    expectRefused("system.ntfs_acl", {value});
}

TEST(NtAcl, hasOffsetsFromItsFirstByte) {
    const std::string head = little<2>(4, 4) + little<4>(0x20000, 0x20004) + little<2>(1)
                             + std::string(64, '\x11') + std::string("posix_acl\0", 10);
    std::string value = head;
    value.resize((value.size() + 3) / 4 * 4);
    value += little<8>(windowsTicks(1'650'470'447)) + std::string(64, '\x22');
    ASSERT_EQ(value.size(), 0xA0U);
    value += securityDescriptor(everyone, everyone, {{0, 0, 0x001200A9, everyone}}, value.size());
    const std::vector<std::string> lines = explainedLines("security.NTACL", value);
    EXPECT_THAT(lines, Contains("Written: 2022-04-20 16:00:47 UTC"));
    EXPECT_THAT(lines, Contains("Description: posix_acl"));
    EXPECT_THAT(lines, Contains("Hash type: SHA-256 (1)"));
    EXPECT_THAT(lines, Contains("Access: allow S-1-1-0 (Everyone): read and run (0x001200a9)"));
    expectEveryCutRefused("security.NTACL", value);
}

TEST(NtAcl, hasOlderVersionsWithFewerHashes) {
    const std::string first = little<2>(1, 1) + little<4>(0x20000);
    EXPECT_THAT(
        explainedLines("security.NTACL", first + securityDescriptor(everyone, everyone, {}, 8)),
        Contains("Owner: S-1-1-0 (Everyone)"));
    const std::string second = little<2>(2, 2) + std::string(8, '\1') + std::string(16, '\x11');
    EXPECT_THAT(
        explainedLines("security.NTACL", second + securityDescriptor(everyone, everyone, {}, second.size())),
        Contains("Hash: 11111111111111111111111111111111"));
    const std::string third = little<2>(3, 3) + std::string(8, '\1') + little<2>(0) + zeros(64);
    EXPECT_THAT(
        explainedLines("security.NTACL", third + securityDescriptor(everyone, everyone, {}, third.size())),
        Contains("Hash type: none (0)"));
    expectRefused("security.NTACL", {little<2>(1, 2) + zeros(40), little<2>(5, 5) + zeros(40)});
}

} // namespace
} // namespace tolvane::tests
