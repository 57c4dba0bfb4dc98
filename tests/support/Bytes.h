/// Bytes as tests change and print them.
#pragma once

#include "platform/values/HexDigits.h"
#include "platform/values/Value.h"

#include <cstddef>
#include <string>

namespace tolvane::tests {

/// The first `count` bytes, in memory of exactly that size.
inline platform::Data front(const platform::Data& bytes, std::size_t count) {
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}

/// The bytes with one of them replaced.
inline platform::Data withByte(platform::Data bytes, std::size_t offset, unsigned value) {
    bytes.at(offset) = static_cast<std::byte>(value);
    return bytes;
}

/// Two digits for each byte.
inline std::string hexOf(const platform::Data& bytes, platform::HexCase letters = platform::HexCase::lower) {
    std::string digits;
    for (const std::byte byte : bytes) {
        platform::appendHex(digits, std::to_integer<unsigned>(byte), 2, letters);
    }
    return digits;
}

} // namespace tolvane::tests
