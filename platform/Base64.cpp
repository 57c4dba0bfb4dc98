#include "platform/Base64.h"

#include <array>
#include <cstdint>

namespace tolvane::platform {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t noDigit = 64;

/// The value of each character as a base-64 digit.
constexpr std::array<std::uint8_t, 256> digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t value = 0; value < alphabet.size(); ++value) {
        values.at(static_cast<unsigned char>(alphabet[value])) = static_cast<std::uint8_t>(value);
    }
    return values;
}();

} // namespace

std::string base64EncodedString(std::span<const std::byte> bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    while (!bytes.empty()) {
        const std::size_t count = bytes.size() < 3 ? bytes.size() : 3;
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            group = (group << 8U) | (i < count ? std::to_integer<std::uint32_t>(bytes[i]) : 0U);
        }
        const std::array<char, 4> characters{
            alphabet[group >> 18U], alphabet[(group >> 12U) & 63U],
            count > 1 ? alphabet[(group >> 6U) & 63U] : '=', count > 2 ? alphabet[group & 63U] : '='};
        text.append(characters.data(), characters.size());
        bytes = bytes.subspan(count);
    }
    return text;
}

std::optional<Data> base64DecodedData(std::string_view text) {
    if (text.size() % 4 != 0) {
        return std::nullopt;
    }
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    text.remove_suffix(padding);
    Data bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char c : text) {
        const std::uint8_t value = digitValues.at(static_cast<unsigned char>(c));
        if (value == noDigit) {
            return std::nullopt;
        }
        bits = (bits << 6U) | value;
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes.push_back(static_cast<std::byte>((bits >> count) & 0xFFU));
        }
    }
    return bytes;
}

} // namespace tolvane::platform
