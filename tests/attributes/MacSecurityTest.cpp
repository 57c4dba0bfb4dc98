#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

TEST(MacSecurity, hasAccountsByNumberOrGuid) {
    const std::string user = bytesOfHex("FFFFEEEE DDDD CCCC BBBB AAAA 000001F5");
    const std::string group = bytesOfHex("ABCDEFAB CDEF ABCD EFAB CDEF 00000050");
    const std::string other = bytesOfHex("00112233 4455 6677 8899 AABBCCDDEEFF");
    const std::string value = big<4>(0x012CC16D) + user + zeros(16) + big<4>(2, 0) + group
                              + big<4>(0x12, 0x10) + other + big<4>(1, 0x2);
    expectLines(
        "com.apple.system.Security", value,
        {"Owner: user u501", "List flags: 0x00000000",
         "Entry: deny group g80: delete (0x00000010); was inherited",
         "Entry: allow 00112233-4455-6677-8899-AABBCCDDEEFF: read or list (0x00000002)"},
        knownAccounts());
    expectEveryCutRefused("com.apple.system.Security", value);
    expectRefused("com.apple.system.Security", {value + "x"});
}

TEST(MacSecurity, mayHaveNoList) {
    const std::string value = big<4>(0x012CC16D) + zeros(32) + big<4>(0xFFFFFFFF, 1);
    expectLines("com.apple.system.Security", value, {"List flags: 0x00000001"});
}

TEST(MacAclText, hasOneEntryForEachLine) {
    const std::string value =
        "!#acl 1\nuser:FFFFEEEE-DDDD-CCCC-BBBB-AAAA000001F5:nelly:501:deny,inherited:delete,read\n"
        "group:ABCDEFAB-CDEF-ABCD-EFAB-CDEF00000050::80:allow:write\n";
    expectLines(
        "com.apple.acl.text", value,
        {"Entry: deny user nelly (501): delete,read; inherited", "Entry: allow group  (80): write"});
    EXPECT_THAT(explainedSummary("com.apple.acl.text", value + zeros(1)), HasSubstr("2 entries"));
    expectRefused("com.apple.acl.text", {"!#acl 2\n"});
    EXPECT_THAT(complaintAbout("com.apple.acl.text", "!#acl 1\nuser:x"), HasSubstr("at byte 8"));
    expectRefused("com.apple.acl.text", {"!#acl 1\nrole:1:2:3:allow:x"});
}

} // namespace
} // namespace tolvane::tests
