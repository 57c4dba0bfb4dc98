#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

constexpr const char* access = "system.posix_acl_access";

TEST(PosixAcl, hasEachEntryWithItsEffectiveRights) {
    const std::string value = posixAcl({{1, 7}, {2, 6, 1000}, {4, 5}, {8, 7, 20}, {0x10, 4}, {0x20, 0}});
    expectLines(
        access, value,
        {"Entry: user::rwx", "Entry: user:u1000:rw- (effective: r--)", "Entry: group::r-x (effective: r--)",
         "Entry: group:g20:rwx (effective: r--)", "Entry: mask::r--", "Entry: other::---"},
        knownAccounts());
    EXPECT_THAT(explainedSummary(access, value), HasSubstr("2 users or groups are named"));
}

TEST(PosixAcl, withoutAMaskLimitsNothing) {
    expectLines(
        access, posixAcl({{1, 6}, {4, 6}, {0x20, 6}}),
        {"Entry: user::rw-", "Entry: group::rw-", "Entry: other::rw-"});
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
        expectRefused(access, {value.substr(0, length)});
    }
    expectRefused(access, {posixAcl({{3, 7}}), posixAcl({{1, 8}}), little<4>(1)});
    EXPECT_EQ(complaintAbout(access, posixAcl(std::vector<PosixAclEntry>(8192, {1, 7}))), "");
    expectRefused(access, {posixAcl(std::vector<PosixAclEntry>(8193, {1, 7}))});
}

TEST(XfsAcl, isBigEndian) {
    const std::string value = big<4>(2, 1, 0xFFFFFFFF) + big<2>(7, 0) + big<4>(8, 5) + big<2>(4, 0);
    expectLines("trusted.SGI_ACL_FILE", value, {"Entry: user::rwx", "Entry: group:5:r--"});
    expectEveryCutRefused("trusted.SGI_ACL_DEFAULT", value);
    expectRefused("trusted.SGI_ACL_FILE", {value + "x"});
}

TEST(RsyncAcl, marksUsersInTheTopBit) {
    const std::string value = little<4>(7, 5, 0x80, 0, 1000, 0x80000006, 20, 4);
    expectLines(
        "user.rsync.%aacl", value,
        {"Entry: user::rwx", "Entry: group::r-x", "Entry: other::---", "Entry: user:1000:rw-",
         "Entry: group:20:r--"});
    expectRefused("rsync.%dacl", {value.substr(0, 15), value.substr(0, 20)});
}

} // namespace
} // namespace tolvane::tests
