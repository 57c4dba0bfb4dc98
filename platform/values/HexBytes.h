#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {

/// Writes two lower-case hexadecimal digits for each byte, and returns the place behind them. For attributes
/// and bookmarks, which have thousands.
inline char* writeHexBytes(char* place, std::span<const std::byte> bytes) {
    static constexpr auto pairs = [] {
        constexpr std::string_view digits = "0123456789abcdef";
        std::array<std::array<char, 2>, 256> all{};
        for (std::size_t byte = 0; byte < all.size(); ++byte) {
            all.at(byte) = {digits[byte >> 4U], digits[byte & 0xFU]};
        }
        return all;
    }();
    for (const std::byte byte : bytes) {
        const std::array<char, 2>& pair = pairs[std::to_integer<std::size_t>(byte)];
        std::memcpy(std::exchange(place, place + pair.size()), pair.data(), pair.size());
    }
    return place;
}

/// Appends these digits.
inline void appendHexBytes(std::string& text, std::span<const std::byte> bytes) {
    const std::size_t start = text.size();
    text.resize(start + 2 * bytes.size());
    writeHexBytes(text.data() + start, bytes);
}

} // namespace tolvane::platform
