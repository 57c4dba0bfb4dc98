#include "tests/attributes/Explaining.h"
#include "tests/support/AttributeValues.h"
#include "tests/support/PropertyListWriters.h"

namespace tolvane::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Integrity, hasADigestOfItsAlgorithmsLength) {
    const std::string value = bytesOfHex("0404") + std::string(32, '\x11');
    EXPECT_THAT(explainedLines("security.ima", value)[0], "Algorithm: sha256 (4)");
    EXPECT_THAT(explainedSummary("user.ima", value), HasSubstr("Digest (sha256) of the file's content"));
    expectEveryCutRefused("security.ima", value);
    EXPECT_NE(complaintAbout("security.ima", value + "x"), "");
    EXPECT_THAT(
        explainedLines("security.ima", bytesOfHex("0463 aabb")),
        ElementsAre("Algorithm: unknown (99)", "Digest: aabb"));
}

TEST(Integrity, knowsOldDigestsByTheirLength) {
    EXPECT_THAT(
        explainedLines("security.ima", "\x01" + std::string(20, 'a'))[0], "Algorithm: SHA-1 by its length");
    EXPECT_THAT(
        explainedLines("security.ima", "\x01" + std::string(16, 'a'))[0],
        "Algorithm: MD5 or MD4 by its length");
    EXPECT_NE(complaintAbout("security.ima", "\x01" + std::string(17, 'a')), "");
}

TEST(Integrity, hasASealOfThisMachine) {
    EXPECT_THAT(explainedSummary("security.evm", "\x02" + std::string(20, 'a')), HasSubstr("HMAC-SHA1"));
    expectEveryCutRefused("security.evm", "\x02" + std::string(20, 'a'));
}

TEST(Integrity, hasASignatureWithItsKey) {
    const std::string value = bytesOfHex("05 02 04 01020304 0003 aabbcc");
    EXPECT_THAT(
        explainedLines("security.evm", value),
        ElementsAre("Signature version: 2", "Algorithm: sha256 (4)", "Key: 0x01020304", "Signature: aabbcc"));
    EXPECT_THAT(explainedSummary("security.evm", value), HasSubstr("portable between systems"));
    expectEveryCutRefused("security.evm", value);
    EXPECT_THAT(
        explainedSummary("security.ima", bytesOfHex("06 03 04 01020304 0000")), HasSubstr("fs-verity"));
    EXPECT_NE(complaintAbout("security.ima", bytesOfHex("03 01 04 01020304 0000")), "");
    EXPECT_NE(complaintAbout("security.ima", bytesOfHex("07")), "");
}

TEST(RuleDigest, hasTheLengthOfItsAlgorithm) {
    EXPECT_THAT(explainedLines("security.sehash", std::string(20, 'a'))[0], "Algorithm: SHA-1");
    EXPECT_THAT(explainedLines("security.restorecon_last", std::string(32, 'a'))[0], "Algorithm: SHA-256");
    EXPECT_NE(complaintAbout("security.sehash", std::string(21, 'a')), "");
}

TEST(Ecryptfs, isKnownByItsMarker) {
    const std::uint32_t random = 0x01020304;
    const std::string value = bigEndian(1000, 8) + bigEndian(random, 4) + bigEndian(random ^ 0x3C81B7F5U, 4)
                              + bigEndian(0x03000002, 4);
    EXPECT_THAT(
        explainedLines("user.ecryptfs", value + "ab"),
        ElementsAre("Size when decrypted: 1000 bytes", "Version: 3", "Flags: 0x000002", "Key packets: 6162"));
    expectEveryCutRefused("user.ecryptfs", value);
}

} // namespace
} // namespace tolvane::tests
