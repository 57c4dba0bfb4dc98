#include "platform/values/Base64.h"

#include "tests/support/OldAliasFiles.h"

#include <gtest/gtest.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::platform {
namespace {

std::string encoded(std::string_view text) {
    return base64EncodedString(std::as_bytes(std::span(text)));
}

/// The decoded bytes as text, for bytes that are.
std::optional<std::string> decoded(std::string_view text) {
    const std::optional<Data> bytes = base64DecodedData(text);
    return bytes ? std::optional(std::string(tests::textOf(*bytes))) : std::nullopt;
}

TEST(Base64, encodesAndDecodesTheVectorsOfItsStandard) {
    for (const auto& [bytes, text] : std::vector<std::pair<std::string, std::string>>{
             {"", ""},
             {"f", "Zg=="},
             {"fo", "Zm8="},
             {"foo", "Zm9v"},
             {"foob", "Zm9vYg=="},
             {"fooba", "Zm9vYmE="},
             {"foobar", "Zm9vYmFy"}}) {
        EXPECT_EQ(encoded(bytes), text);
        EXPECT_EQ(decoded(text), bytes);
    }
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

TEST(Base64, decodesWhatItEncodesInOneLine) {
    std::string bytes;
    for (unsigned i = 0; i < 600; ++i) {
        EXPECT_EQ(decoded(encoded(bytes)), bytes);
        bytes += static_cast<char>(i * 37 % 256);
    }
    EXPECT_EQ(encoded(std::string(3'000, '\0')), std::string(4'000, 'A'));
}

TEST(Base64, decodesNoOtherCharacterThanThoseOfItsAlphabet) {
    std::size_t accepted = 0;
    for (unsigned c = 0; c < 256; ++c) {
        const std::string text{'Z', 'm', static_cast<char>(c), 'v'};
        if (const std::optional<std::string> bytes = decoded(text)) {
            EXPECT_EQ(encoded(*bytes), text);
            ++accepted;
        }
    }
    EXPECT_EQ(accepted, 64U);
    for (const std::string_view text :
         {"Zm9v\n", "Zm9v\r\n", "Zm9\n", " Zm9v", "Zm 9", "Zm-v", "Zm_v", "Zm9v Zm9", "Zm\xC3\xA9"}) {
        EXPECT_EQ(decoded(text), std::nullopt) << testing::PrintToString(text);
    }
}

/// "3: what was expected", or "none".
std::string faultIn(std::string_view text) {
    const std::optional<Base64Fault> fault = base64Fault(text);
    EXPECT_EQ(fault.has_value(), !decoded(text)) << text;
    return fault ? std::to_string(fault->offset) + ": " + std::string(fault->expected) : "none";
}

TEST(Base64, reportsWhereATextStopsBeingBase64) {
    EXPECT_EQ(faultIn("Zm9vYg=="), "none");
    EXPECT_EQ(faultIn(""), "none");
    const std::string character = ": a letter, a digit, '+', '/' or the padding '='";
    EXPECT_EQ(faultIn("Zm9v\r\nZm9v"), "4" + character);
    EXPECT_EQ(faultIn("Couldn'tgetAlias."), "6" + character);
    EXPECT_EQ(faultIn("Zm9vZm9_"), "7" + character);
    EXPECT_EQ(faultIn("="), "0: a letter, a digit, '+' or '/'");
    EXPECT_EQ(faultIn("Zm9v===="), "4: a letter, a digit, '+' or '/'");
    EXPECT_EQ(faultIn("Zm9vZ==="), "5: a letter, a digit, '+' or '/'");
    EXPECT_EQ(faultIn("Zg=v"), "3: another '=' of the padding");
    EXPECT_EQ(faultIn("Zg="), "3: another '=' of the padding");
    EXPECT_EQ(faultIn("Zg===="), "4: the end of the text after the padding");
    EXPECT_EQ(faultIn("Zm8=Zm9v"), "4: the end of the text after the padding");
    EXPECT_EQ(faultIn("Zg==Zg=="), "4: the end of the text after the padding");
    for (const std::string_view text : {"Zm9vYg", "Zm9vYmE"}) {
        EXPECT_EQ(
            faultIn(text), std::to_string(text.size()) + ": another character: they come in groups of four");
    }
    EXPECT_EQ(faultIn("Zm9vYg="), "7: another '=' of the padding");
    EXPECT_EQ(faultIn("Zm9vYh=="), "5: a character that leaves no bits over");
    EXPECT_EQ(faultIn("Zm+="), "2: a character that leaves no bits over");
}

// Text that is decoded is the one text that its bytes are encoded as, so padding and unused bits are checked
// too.
TEST(Base64, findsAFaultExactlyWhereNothingIsDecoded) {
    const std::string_view characters = "AZg9+/=-";
    for (std::size_t length = 0; length <= 5; ++length) {
        std::size_t count = 1;
        for (std::size_t i = 0; i < length; ++i) {
            count *= characters.size();
        }
        for (std::size_t number = 0; number < count; ++number) {
            std::string text;
            for (std::size_t rest = number; text.size() < length; rest /= characters.size()) {
                text += characters[rest % characters.size()];
            }
            const std::optional<std::string> bytes = decoded(text);
            const std::optional<Base64Fault> fault = base64Fault(text);
            ASSERT_EQ(fault.has_value(), !bytes) << text;
            ASSERT_TRUE(!bytes || encoded(*bytes) == text) << text;
            ASSERT_TRUE(!fault || fault->offset <= length) << text;
        }
    }
}

} // namespace
} // namespace tolvane::platform
