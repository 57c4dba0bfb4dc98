#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/PropertyListWriters.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(MacSecurity, hasAccountsByNumberOrGuid) {
    const std::string user = bytesOfHex("FFFFEEEE DDDD CCCC BBBB AAAA 000001F5");
    const std::string group = bytesOfHex("ABCDEFAB CDEF ABCD EFAB CDEF 00000050");
    const std::string other = bytesOfHex("00112233 4455 6677 8899 AABBCCDDEEFF");
    const std::string value = bigEndian(0x012CC16D, 4) + user + std::string(16, '\0') + bigEndian(2, 4)
                              + bigEndian(0, 4) + group + bigEndian(0x12, 4) + bigEndian(0x10, 4) + other
                              + bigEndian(1, 4) + bigEndian(0x2, 4);
    EXPECT_THAT(
        linesOf(explained("com.apple.system.Security", value, knownAccounts())),
        ElementsAre(
            "Owner: user u501", "List flags: 0x00000000",
            "Entry: deny group g80: delete (0x00000010); was inherited",
            "Entry: allow 00112233-4455-6677-8899-AABBCCDDEEFF: read or list (0x00000002)"));
    expectEveryCutRefused("com.apple.system.Security", value);
    EXPECT_NE(complaintAbout("com.apple.system.Security", value + "x"), "");
}

TEST(MacSecurity, mayHaveNoList) {
    const std::string value =
        bigEndian(0x012CC16D, 4) + std::string(32, '\0') + bigEndian(0xFFFFFFFF, 4) + bigEndian(1, 4);
    EXPECT_THAT(explainedLines("com.apple.system.Security", value), ElementsAre("List flags: 0x00000001"));
}

TEST(MacAclText, hasOneEntryForEachLine) {
    const std::string value =
        "!#acl 1\nuser:FFFFEEEE-DDDD-CCCC-BBBB-AAAA000001F5:nelly:501:deny,inherited:delete,read\n"
        "group:ABCDEFAB-CDEF-ABCD-EFAB-CDEF00000050::80:allow:write\n";
    EXPECT_THAT(
        explainedLines("com.apple.acl.text", value),
        ElementsAre(
            "Entry: deny user nelly (501): delete,read; inherited", "Entry: allow group  (80): write"));
    EXPECT_THAT(explainedSummary("com.apple.acl.text", value + std::string(1, '\0')), HasSubstr("2 entries"));
    EXPECT_NE(complaintAbout("com.apple.acl.text", "!#acl 2\n"), "");
    EXPECT_THAT(complaintAbout("com.apple.acl.text", "!#acl 1\nuser:x"), HasSubstr("at byte 8"));
    EXPECT_NE(complaintAbout("com.apple.acl.text", "!#acl 1\nrole:1:2:3:allow:x"), "");
}

} // namespace
} // namespace tolvane::tests
