#include "platform/Base64.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>

namespace tolvane::platform {
namespace {

std::string encoded(std::string_view text) {
    return base64EncodedString(std::as_bytes(std::span(text)));
}

TEST(Base64, encodesTheVectorsOfItsStandard) {
    EXPECT_EQ(encoded(""), "");
    EXPECT_EQ(encoded("f"), "Zg==");
    EXPECT_EQ(encoded("fo"), "Zm8=");
    EXPECT_EQ(encoded("foo"), "Zm9v");
    EXPECT_EQ(encoded("foob"), "Zm9vYg==");
    EXPECT_EQ(encoded("fooba"), "Zm9vYmE=");
    EXPECT_EQ(encoded("foobar"), "Zm9vYmFy");
}

TEST(Base64, usesTheWholeStandardAlphabet) {
    std::string bytes;
    for (unsigned group = 0; group < 64; group += 4) {
        const unsigned bits = (group << 18U) | ((group + 1) << 12U) | ((group + 2) << 6U) | (group + 3);
        for (const unsigned shift : {16U, 8U, 0U}) {
            bytes += static_cast<char>((bits >> shift) & 0xFFU);
        }
    }
    EXPECT_EQ(encoded(bytes), "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
}

TEST(Base64, writesLongDataInOneLine) {
    const std::string text = encoded(std::string(3'000, '\0'));
    EXPECT_EQ(text, std::string(4'000, 'A'));
}

} // namespace
} // namespace tolvane::platform
