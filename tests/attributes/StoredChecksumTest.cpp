#include "attributes/StoredChecksum.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>

namespace tolvane::tests {
namespace {

using namespace std::string_view_literals;

std::optional<attributes::StoredChecksum> checksumIn(std::string_view name, std::string_view value) {
    return attributes::storedChecksum(name, std::as_bytes(std::span(value)));
}

TEST(StoredChecksum, isTheBytesThatTheDigitsName) {
    const auto found = checksumIn("user.crc32", "01aBcD00\n\0"sv);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->name, "user.crc32");
    EXPECT_EQ(found->algorithm, "CRC-32");
    EXPECT_EQ(found->digest, (platform::Data{std::byte{1}, std::byte{0xAB}, std::byte{0xCD}, std::byte{0}}));
}

TEST(StoredChecksum, isTheBytesThemselvesWhereTheyAreNoDigits) {
    const auto found = checksumIn("user.checksum.x", std::string(20, '\xFE'));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->algorithm, "SHA-1");
    EXPECT_EQ(found->digest, platform::Data(20, std::byte{0xFE}));
}

TEST(StoredChecksum, isInOtherSystemsNamesToo) {
    const auto found = checksumIn("user.DosStream.user.crc32:$DATA", "01020304\0"sv);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->name, "user.DosStream.user.crc32:$DATA");
    EXPECT_EQ(found->digest.size(), 4U);
}

TEST(StoredChecksum, isInNoOtherAttribute) {
    EXPECT_FALSE(checksumIn("user.sha256", "abc"));
    EXPECT_FALSE(checksumIn("user.sha256", ""));
    EXPECT_FALSE(checksumIn("user.comment", std::string(64, '0')));
    EXPECT_FALSE(checksumIn("user.shatag.ts", "1"));
}

} // namespace
} // namespace tolvane::tests
