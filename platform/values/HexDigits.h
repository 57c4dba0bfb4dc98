#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Hexadecimal digits, written and read.
namespace tolvane::platform {

enum class HexCase { lower, upper };

/// Appends the number with at least so many digits.
inline void appendHex(
    std::string& text, std::uint64_t number, std::size_t fewestDigits, HexCase letters = HexCase::lower) {
    const std::string_view digits = letters == HexCase::lower ? "0123456789abcdef" : "0123456789ABCDEF";
    constexpr std::size_t mostDigits = 16;
    std::size_t count = fewestDigits;
    while (count < mostDigits && number >> (4 * count) != 0) {
        ++count;
    }
    while (count-- > 0) {
        text += count < mostDigits ? digits[(number >> (4 * count)) & 0xFU] : '0';
    }
}

/// That text alone.
inline std::string hexText(std::uint64_t number, std::size_t fewestDigits, HexCase letters = HexCase::lower) {
    std::string text;
    appendHex(text, number, fewestDigits, letters);
    return text;
}

/// What a digit of either case stands for; -1 for any other character.
constexpr int valueOfHexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

} // namespace tolvane::platform
