#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// Appends two lower-case hexadecimal digits for each byte. For attributes and bookmarks, which have
/// thousands.
inline void appendHexBytes(std::string& text, std::span<const std::byte> bytes) {
    static constexpr auto pairs = [] {
        constexpr std::string_view digits = "0123456789abcdef";
        std::array<std::array<char, 2>, 256> all{};
        for (std::size_t byte = 0; byte < all.size(); ++byte) {
            all.at(byte) = {digits[byte >> 4U], digits[byte & 0xFU]};
        }
        return all;
    }();
    const std::size_t start = text.size();
    text.resize(start + 2 * bytes.size());
    char* place = text.data() + start;
    for (const std::byte byte : bytes) {
        const std::array<char, 2>& pair = pairs[std::to_integer<std::size_t>(byte)];
        *place++ = pair[0];
        *place++ = pair[1];
    }
}

} // namespace tolvane::platform
