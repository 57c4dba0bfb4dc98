#include "tests/attributes/Explaining.h"

namespace tolvane::tests {
namespace {

/// Under this name ext4 keeps it, in images only.
constexpr const char* name = "c";
const std::string nonce = bytesOfHex("f0f1f2f3f4f5f6f7f8f9fafbfcfdfeff");

TEST(EncryptionContext, namesTheKeyAndTheModes) {
    const std::string first = bytesOfHex("01 01 04 02") + bytesOfHex("a0a1a2a3a4a5a6a7") + nonce;
    expectLines(
        name, first,
        {"Contents: AES-256-XTS (1)", "Names: AES-256-CTS (4)", "Flags: 0x02",
         "Key descriptor: a0a1a2a3a4a5a6a7", "Nonce: f0f1f2f3f4f5f6f7f8f9fafbfcfdfeff", "Version: 1"});
    const std::string second = bytesOfHex("02 09 09 03 0c 000000") + std::string(16, 'k') + nonce;
    expectLines(
        name, second,
        {"Contents: Adiantum (9)", "Names: Adiantum (9)", "Flags: 0x03", "Data unit, as a power of two: 12",
         "Key identifier: 6b6b6b6b6b6b6b6b6b6b6b6b6b6b6b6b", "Nonce: f0f1f2f3f4f5f6f7f8f9fafbfcfdfeff",
         "Version: 2"});
    const attributes::Explanation explanation = explained(name, first);
    EXPECT_EQ(explanation.title, "Encryption");
    EXPECT_EQ(explanation.certainty, attributes::Certainty::guess);
    EXPECT_EQ(
        explanation.summary, "Which key the kernel (fscrypt) encrypts the item with: contents by "
                             "AES-256-XTS, names by AES-256-CTS.");
}

TEST(EncryptionContext, isNothingOfAnotherVersionLengthOrMode) {
    const std::string value = bytesOfHex("02 01 04 02 00 000000") + std::string(16, '\x80') + nonce;
    EXPECT_EQ(explained(name, value).title, "Encryption");
    EXPECT_NE(explained(name, value.substr(1)).title, "Encryption");
    EXPECT_NE(explained(name, value + "\x80").title, "Encryption");
    for (const std::size_t at : {std::size_t{0}, std::size_t{1}, std::size_t{2}}) {
        std::string other = value;
        other[at] = '\x03';
        EXPECT_NE(explained(name, other).title, "Encryption") << at;
    }
}

} // namespace
} // namespace tolvane::tests
