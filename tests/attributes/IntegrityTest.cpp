#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

using testing::HasSubstr;

TEST(Integrity, hasADigestOfItsAlgorithmsLength) {
    const std::string value = bytesOfHex("0404") + std::string(32, '\x11');
    EXPECT_THAT(explainedLines("security.ima", value)[0], "Algorithm: sha256 (4)");
    EXPECT_THAT(explainedSummary("user.ima", value), HasSubstr("Digest (sha256) of the file's content"));
    expectEveryCutRefused("security.ima", value);
    expectRefused("security.ima", {value + "x"});
    expectLines("security.ima", bytesOfHex("0463 aabb"), {"Algorithm: unknown (99)", "Digest: aabb"});
}

TEST(Integrity, knowsOldDigestsByTheirLength) {
    EXPECT_THAT(
        explainedLines("security.ima", "\x01" + std::string(20, 'a'))[0], "Algorithm: SHA-1 by its length");
    EXPECT_THAT(
        explainedLines("security.ima", "\x01" + std::string(16, 'a'))[0],
        "Algorithm: MD5 or MD4 by its length");
    expectRefused("security.ima", {"\x01" + std::string(17, 'a')});
}

TEST(Integrity, hasASealOfThisMachine) {
    EXPECT_THAT(explainedSummary("security.evm", "\x02" + std::string(20, 'a')), HasSubstr("HMAC-SHA1"));
    expectEveryCutRefused("security.evm", "\x02" + std::string(20, 'a'));
}

TEST(Integrity, hasASignatureWithItsKey) {
    const std::string value = bytesOfHex("05 02 04 01020304 0003 aabbcc");
    expectLines(
        "security.evm", value,
        {"Signature version: 2", "Algorithm: sha256 (4)", "Key: 0x01020304", "Signature: aabbcc"});
    EXPECT_THAT(explainedSummary("security.evm", value), HasSubstr("portable between systems"));
    expectEveryCutRefused("security.evm", value);
    EXPECT_THAT(
        explainedSummary("security.ima", bytesOfHex("06 03 04 01020304 0000")), HasSubstr("fs-verity"));
    expectRefused("security.ima", {bytesOfHex("03 01 04 01020304 0000"), bytesOfHex("07")});
}

TEST(RuleDigest, hasTheLengthOfItsAlgorithm) {
    EXPECT_THAT(explainedLines("security.sehash", std::string(20, 'a'))[0], "Algorithm: SHA-1");
    EXPECT_THAT(explainedLines("security.restorecon_last", std::string(32, 'a'))[0], "Algorithm: SHA-256");
    expectRefused("security.sehash", {std::string(21, 'a')});
}

TEST(Ecryptfs, isKnownByItsMarker) {
    const std::uint32_t random = 0x01020304;
    const std::string value = big<8>(1000) + big<4>(random, random ^ 0x3C81B7F5U, 0x03000002);
    expectLines(
        "user.ecryptfs", value + "ab",
        {"Size when decrypted: 1000 bytes", "Version: 3", "Flags: 0x000002", "Key packets: 6162"});
    expectEveryCutRefused("user.ecryptfs", value);
}

} // namespace
} // namespace tolvane::tests
