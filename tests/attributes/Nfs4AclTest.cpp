#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

TEST(Nfs4Acl, hasEachEntryInWords) {
    const std::string value = nfs4Acl(
        {{0, 0, 0x001F01FF, "OWNER@"}, {1, 0x43, 0x00000002, "staff@example.org"}, {9, 0, 0, "1000"}});
    expectLines(
        "system.nfs4_acl", value,
        {"Entry: allow OWNER@: full control (0x001f01ff)",
         "Entry: deny staff@example.org: write or add files "
         "(0x00000002); files inherit, folders inherit, group",
         "Entry: type 9 1000: none (0x00000000)"});
    EXPECT_THAT(explainedSummary("system.nfs4_acl", value), HasSubstr("3 entries"));
    expectEveryCutRefused("system.nfs4_acl", value);
    expectRefused("system.nfs4_acl", {value + zeros(4), nfs4Acl({{0, 0, 0, "\xFF"}}), big<4>(8193)});
}

TEST(Nfs4Acl, hasFlagsBeforeTheListInItsNewerForms) {
    expectLines(
        "system.nfs4_dacl", big<4>(1) + nfs4Acl({{2, 0x30, 0x20, "EVERYONE@"}}),
        {"List flags: 0x00000001",
         "Entry: audit EVERYONE@: run or search (0x00000020); on success, on failure"});
}

TEST(Nfs4AclNumbers, hasAccountsAndSpecialOnes) {
    const auto entry = [](std::uint32_t flag, std::uint32_t special, std::uint32_t who) {
        return big<4>(0, flag, special, 1, who);
    };
    const std::string value =
        big<4>(0x20002, 4) + entry(0, 1, 1) + entry(0, 1, 3) + entry(0, 0, 1000) + entry(0x40, 0, 20);
    expectLines(
        "system.nfs4_acl_xdr", value,
        {"List flags: protected, folder (0x00020002)", "Entry: allow OWNER@: read or list (0x00000001)",
         "Entry: allow EVERYONE@: read or list (0x00000001)",
         "Entry: allow user u1000: read or list (0x00000001)",
         "Entry: allow group g20: read or list (0x00000001); group"},
        knownAccounts());
    expectEveryCutRefused("security.nfs4acl_xdr", value);
    expectRefused("security.nfs4acl_xdr", {big<4>(0, 1) + entry(0, 1, 4), big<4>(0, 1) + entry(0, 1, 0)});
}

TEST(Nfs4AclBlob, hasNamesEndedByNul) {
    const std::string value = big<1>(1, 2) + big<2>(2) + zeros(12) + big<2>(0, 0) + big<4>(1, 7)
                              + std::string("OWNER@\0\0", 8) + big<2>(1, 0x40) + big<4>(1, 20)
                              + std::string("\0\0\0\0", 4);
    expectLines(
        "security.nfs4acl_ndr", value,
        {"Version: 1", "List flags: 0x02", "Owner mask: 0x00000000", "Group mask: 0x00000000",
         "Other mask: 0x00000000", "Entry: allow OWNER@: read or list (0x00000001)",
         "Entry: deny group 20: read or list (0x00000001); group"});
    expectRefused("security.nfs4acl_ndr", {value.substr(0, 30), value + "x", value.substr(0, 15)});
}

TEST(RichAcl, isLittleEndian) {
    const std::string value = bytesOfHex("00 01") + little<2>(2) + little<4>(1, 2, 4) + little<2>(0, 0x100)
                              + little<4>(1, 2) + little<2>(1, 0) + little<4>(2, 1000);
    expectRecord(
        "system.richacl", value,
        {"List flags: 0x01", "Owner mask: 0x00000001", "Group mask: 0x00000002", "Other mask: 0x00000004",
         "Entry: allow EVERYONE@: read or list (0x00000001)",
         "Entry: deny user 1000: write or add files (0x00000002)"});
    expectRefused("system.richacl", {bytesOfHex("01") + value.substr(1)});
}

} // namespace
} // namespace tolvane::tests
