#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/PropertyListWriters.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* access = "system.posix_acl_access";

TEST(PosixAcl, hasEachEntryWithItsEffectiveRights) {
    const std::string value = posixAcl({{1, 7}, {2, 6, 1000}, {4, 5}, {8, 7, 20}, {0x10, 4}, {0x20, 0}});
    EXPECT_THAT(
        linesOf(explained(access, value, knownAccounts())),
        ElementsAre(
            "Entry: user::rwx", "Entry: user:u1000:rw- (effective: r--)",
            "Entry: group::r-x (effective: r--)", "Entry: group:g20:rwx (effective: r--)", "Entry: mask::r--",
            "Entry: other::---"));
    EXPECT_THAT(explainedSummary(access, value), HasSubstr("2 users or groups are named"));
}

TEST(PosixAcl, withoutAMaskLimitsNothing) {
    EXPECT_THAT(
        explainedLines(access, posixAcl({{1, 6}, {4, 6}, {0x20, 6}})),
        ElementsAre("Entry: user::rw-", "Entry: group::rw-", "Entry: other::rw-"));
}

TEST(PosixAcl, mayHaveNoEntries) {
    EXPECT_EQ(
        explainedSummary(access, posixAcl({})),
        "Access control list without entries: the permissions alone apply.");
}

TEST(PosixAcl, ofAFolderIsForNewItems) {
    EXPECT_THAT(
        explainedSummary("system.posix_acl_default", posixAcl({{2, 7, 1}})),
        HasSubstr("that new items in this folder get; 1 user"));
}

TEST(PosixAcl, isRefusedInAnyOtherForm) {
    const std::string value = posixAcl({{1, 7}});
    for (const std::size_t length : {0U, 3U, 5U, 11U}) {
        EXPECT_NE(complaintAbout(access, value.substr(0, length)), "");
    }
    EXPECT_NE(complaintAbout(access, posixAcl({{3, 7}})), "");
    EXPECT_NE(complaintAbout(access, posixAcl({{1, 8}})), "");
    EXPECT_NE(complaintAbout(access, littleEndian(1, 4)), "");
    EXPECT_EQ(complaintAbout(access, posixAcl(std::vector<PosixAclEntry>(8192, {1, 7}))), "");
    EXPECT_NE(complaintAbout(access, posixAcl(std::vector<PosixAclEntry>(8193, {1, 7}))), "");
}

TEST(XfsAcl, isBigEndian) {
    const std::string value = bigEndian(2, 4) + bigEndian(1, 4) + bigEndian(0xFFFFFFFF, 4) + bigEndian(7, 2)
                              + bigEndian(0, 2) + bigEndian(8, 4) + bigEndian(5, 4) + bigEndian(4, 2)
                              + bigEndian(0, 2);
    EXPECT_THAT(
        explainedLines("trusted.SGI_ACL_FILE", value), ElementsAre("Entry: user::rwx", "Entry: group:5:r--"));
    expectEveryCutRefused("trusted.SGI_ACL_DEFAULT", value);
    EXPECT_NE(complaintAbout("trusted.SGI_ACL_FILE", value + "x"), "");
}

TEST(RsyncAcl, marksUsersInTheTopBit) {
    const std::string value = littleEndian(7, 4) + littleEndian(5, 4) + littleEndian(0x80, 4)
                              + littleEndian(0, 4) + littleEndian(1000, 4) + littleEndian(0x80000006, 4)
                              + littleEndian(20, 4) + littleEndian(4, 4);
    EXPECT_THAT(
        explainedLines("user.rsync.%aacl", value),
        ElementsAre(
            "Entry: user::rwx", "Entry: group::r-x", "Entry: other::---", "Entry: user:1000:rw-",
            "Entry: group:20:r--"));
    EXPECT_NE(complaintAbout("rsync.%dacl", value.substr(0, 15)), "");
    EXPECT_NE(complaintAbout("rsync.%dacl", value.substr(0, 20)), "");
}

} // namespace
} // namespace tolvane::tests
