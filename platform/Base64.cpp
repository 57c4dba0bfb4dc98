#include "platform/Base64.h"

#include <array>

namespace tolvane::platform {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

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
    Data bytes;
    bytes.reserve(text.size() / 4 * 3);
    for (; !text.empty(); text.remove_prefix(4)) {
        const std::string_view group = text.substr(0, 4);
        const std::size_t padding = text.size() > 4 || group[3] != '=' ? 0U : group[2] != '=' ? 1U : 2U;
        std::uint32_t bits = 0;
        for (const char c : group.substr(0, 4 - padding)) {
            const std::size_t digit = alphabet.find(c);
            if (digit == std::string_view::npos) {
                return std::nullopt;
            }
            bits = (bits << 6U) | static_cast<std::uint32_t>(digit);
        }
        bits <<= 6U * padding;
        const std::uint32_t leftOver = bits & ((1U << (8U * padding)) - 1U);
        if (leftOver != 0) {
            return std::nullopt;
        }
        for (std::size_t i = 0; i < 3 - padding; ++i) {
            bytes.push_back(static_cast<std::byte>(bits >> (16U - 8U * i)));
        }
    }
    return bytes;
}

} // namespace tolvane::platform
