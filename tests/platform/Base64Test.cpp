#include "platform/Base64.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
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

std::optional<std::string> decoded(std::string_view text) {
    const auto bytes = base64DecodedData(text);
    if (!bytes) {
        return std::nullopt;
    }
    std::string characters;
    for (const std::byte byte : *bytes) {
        characters += static_cast<char>(byte);
    }
    return characters;
}

TEST(Base64, decodesTheVectorsOfItsStandard) {
    EXPECT_EQ(decoded(""), "");
    EXPECT_EQ(decoded("Zg=="), "f");
    EXPECT_EQ(decoded("Zm8="), "fo");
    EXPECT_EQ(decoded("Zm9v"), "foo");
    EXPECT_EQ(decoded("Zm9vYg=="), "foob");
    EXPECT_EQ(decoded("Zm9vYmE="), "fooba");
    EXPECT_EQ(decoded("Zm9vYmFy"), "foobar");
}

TEST(Base64, givesBackWhatWasEncoded) {
    std::string bytes;
    for (unsigned byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
        EXPECT_EQ(decoded(encoded(bytes)), bytes);
    }
    const std::string large(100'000, '\xA5');
    EXPECT_EQ(decoded(encoded(large)), large);
}

TEST(Base64, refusesCharactersOutsideTheAlphabet) {
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const bool known =
            std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/").contains(c);
        for (const std::size_t place : {0U, 1U, 2U, 3U}) {
            std::string text = "AAAAAAAA";
            text[place] = c;
            EXPECT_EQ(decoded(text).has_value(), known) << byte << " at " << place;
        }
    }
    EXPECT_EQ(decoded("Zm9v\nZm9v"), std::nullopt);
    EXPECT_EQ(decoded("Zm9v\r\nZg"), std::nullopt);
    EXPECT_EQ(decoded(" Zm9vYg="), std::nullopt);
    EXPECT_EQ(decoded("-_-_"), std::nullopt) << "the alphabet for URLs is another one";
}

TEST(Base64, refusesMissingOrMisplacedPadding) {
    for (const char* text :
         {"Z", "Zg", "Zg=", "Zm8", "Zm9vYg", "Zm9vYg=", "Zm9v=", "Zm9v==", "Zm9v====", "=",
          "==", "====", "Z===", "Zg=a", "=Zg=", "Zg==Zg==", "Zg==Zm9v"}) {
        EXPECT_EQ(decoded(text), std::nullopt) << text;
    }
}

TEST(Base64, disregardsBitsThatBelongToNoByte) {
    EXPECT_EQ(decoded("Zh=="), "f");
    EXPECT_EQ(decoded("Zm9="), "fo");
}

} // namespace
} // namespace tolvane::platform
