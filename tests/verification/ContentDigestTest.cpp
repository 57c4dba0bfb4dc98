#include "verification/ContentDigest.h"

#include "tests/support/Bytes.h"

#include <gtest/gtest.h>

#include <span>
#include <string_view>
#include <utility>

namespace tolvane::verification {
namespace {

using tests::hexOf;

/// An algorithm, and its digits of the test message "abc" as published.
constexpr std::pair<std::string_view, std::string_view> published[] = {
    {"MD5", "900150983cd24fb0d6963f7d28e17f72"},
    {"SHA-1", "a9993e364706816aba3e25717850c26c9cd0d89d"},
    {"SHA-224", "23097d223405d8228642a477bda255b32aadbce4bda0b3f7e36c9da7"},
    {"SHA-256", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
    {"SHA-384",
     "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed8086072ba1e7cc2358baeca134c825a7"},
    {"SHA-512", "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
                "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f"},
    {"BLAKE2b", "ba80a53f981c4d0d6a2797b69f12f6e94c212f14685ac4b74b12bb6fdbffa2d1"
                "7d87c5392aab792dc252d5de4533cc9518d38aa8dbf1925ab92386edd4009923"},
    {"CRC-32", "352441c2"}};

TEST(ContentDigest, agreesWithPublishedChecksums) {
    for (const auto& [algorithm, digits] : published) {
        const auto digest = digestFor(algorithm, digits.size() / 2);
        ASSERT_NE(digest, nullptr) << algorithm;
        digest->add(std::as_bytes(std::span(std::string_view("a"))));
        digest->add({});
        digest->add(std::as_bytes(std::span(std::string_view("bc"))));
        EXPECT_EQ(hexOf(digest->finish()), digits);
    }
}

TEST(ContentDigest, takesNoContentAsZeroBytes) {
    EXPECT_EQ(hexOf(digestFor("MD5", 16)->finish()), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(hexOf(digestFor("CRC-32", 4)->finish()), "00000000");
}

TEST(ContentDigest, isNotForOtherAlgorithmsOrLengths) {
    EXPECT_EQ(digestFor("BLAKE3", 32), nullptr);
    EXPECT_EQ(digestFor("BLAKE2b", 32), nullptr);
    EXPECT_EQ(digestFor("SHA-256", 16), nullptr);
    EXPECT_EQ(digestFor("CRC-32", 8), nullptr);
    EXPECT_EQ(digestFor("", 0), nullptr);
}

} // namespace
} // namespace tolvane::verification
