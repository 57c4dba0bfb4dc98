#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/PropertyListWriters.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Nfs4Acl, hasEachEntryInWords) {
    const std::string value = nfs4Acl(
        {{0, 0, 0x001F01FF, "OWNER@"}, {1, 0x43, 0x00000002, "staff@example.org"}, {9, 0, 0, "1000"}});
    EXPECT_THAT(
        explainedLines("system.nfs4_acl", value), ElementsAre(
                                                      "Entry: allow OWNER@: full control (0x001f01ff)",
                                                      "Entry: deny staff@example.org: write or add files "
                                                      "(0x00000002); files inherit, folders inherit, group",
                                                      "Entry: type 9 1000: none (0x00000000)"));
    EXPECT_THAT(explainedSummary("system.nfs4_acl", value), HasSubstr("3 entries"));
    expectEveryCutRefused("system.nfs4_acl", value);
    EXPECT_NE(complaintAbout("system.nfs4_acl", value + std::string(4, '\0')), "");
    EXPECT_NE(complaintAbout("system.nfs4_acl", nfs4Acl({{0, 0, 0, "\xFF"}})), "");
    EXPECT_NE(complaintAbout("system.nfs4_acl", bigEndian(8193, 4)), "");
}

TEST(Nfs4Acl, hasFlagsBeforeTheListInItsNewerForms) {
    EXPECT_THAT(
        explainedLines("system.nfs4_dacl", bigEndian(1, 4) + nfs4Acl({{2, 0x30, 0x20, "EVERYONE@"}})),
        ElementsAre(
            "List flags: 0x00000001",
            "Entry: audit EVERYONE@: run or search (0x00000020); on success, on failure"));
}

TEST(Nfs4AclNumbers, hasAccountsAndSpecialOnes) {
    const auto entry = [](std::uint32_t flag, std::uint32_t special, std::uint32_t who) {
        return bigEndian(0, 4) + bigEndian(flag, 4) + bigEndian(special, 4) + bigEndian(1, 4)
               + bigEndian(who, 4);
    };
    const std::string value = bigEndian(0x20002, 4) + bigEndian(4, 4) + entry(0, 1, 1) + entry(0, 1, 3)
                              + entry(0, 0, 1000) + entry(0x40, 0, 20);
    EXPECT_THAT(
        linesOf(explained("system.nfs4_acl_xdr", value, knownAccounts())),
        ElementsAre(
            "List flags: protected, folder (0x00020002)", "Entry: allow OWNER@: read or list (0x00000001)",
            "Entry: allow EVERYONE@: read or list (0x00000001)",
            "Entry: allow user u1000: read or list (0x00000001)",
            "Entry: allow group g20: read or list (0x00000001); group"));
    expectEveryCutRefused("security.nfs4acl_xdr", value);
    EXPECT_NE(complaintAbout("security.nfs4acl_xdr", bigEndian(0, 4) + bigEndian(1, 4) + entry(0, 1, 4)), "");
    EXPECT_NE(complaintAbout("security.nfs4acl_xdr", bigEndian(0, 4) + bigEndian(1, 4) + entry(0, 1, 0)), "");
}

TEST(Nfs4AclBlob, hasNamesEndedByNul) {
    const std::string value = bigEndian(1, 1) + bigEndian(2, 1) + bigEndian(2, 2) + std::string(12, '\0')
                              + bigEndian(0, 2) + bigEndian(0, 2) + bigEndian(1, 4) + bigEndian(7, 4)
                              + std::string("OWNER@\0\0", 8) + bigEndian(1, 2) + bigEndian(0x40, 2)
                              + bigEndian(1, 4) + bigEndian(20, 4) + std::string("\0\0\0\0", 4);
    EXPECT_THAT(
        explainedLines("security.nfs4acl_ndr", value),
        ElementsAre(
            "Version: 1", "List flags: 0x02", "Owner mask: 0x00000000", "Group mask: 0x00000000",
            "Other mask: 0x00000000", "Entry: allow OWNER@: read or list (0x00000001)",
            "Entry: deny group 20: read or list (0x00000001); group"));
    EXPECT_NE(complaintAbout("security.nfs4acl_ndr", value.substr(0, 30)), "");
    EXPECT_NE(complaintAbout("security.nfs4acl_ndr", value + "x"), "");
    EXPECT_NE(complaintAbout("security.nfs4acl_ndr", value.substr(0, 15)), "");
}

TEST(RichAcl, isLittleEndian) {
    const std::string value = bytesOfHex("00 01") + littleEndian(2, 2) + littleEndian(1, 4)
                              + littleEndian(2, 4) + littleEndian(4, 4) + littleEndian(0, 2)
                              + littleEndian(0x100, 2) + littleEndian(1, 4) + littleEndian(2, 4)
                              + littleEndian(1, 2) + littleEndian(0, 2) + littleEndian(2, 4)
                              + littleEndian(1000, 4);
    EXPECT_THAT(
        explainedLines("system.richacl", value),
        ElementsAre(
            "List flags: 0x01", "Owner mask: 0x00000001", "Group mask: 0x00000002", "Other mask: 0x00000004",
            "Entry: allow EVERYONE@: read or list (0x00000001)",
            "Entry: deny user 1000: write or add files (0x00000002)"));
    expectEveryCutRefused("system.richacl", value);
    EXPECT_NE(complaintAbout("system.richacl", bytesOfHex("01") + value.substr(1)), "");
}

} // namespace
} // namespace tolvane::tests
