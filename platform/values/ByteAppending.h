#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// Appends numbers and texts to growing bytes; the counterpart of ByteCursor.
namespace tolvane::platform {

inline void appendBytes(Data& out, std::span<const std::byte> bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

inline void appendText(Data& out, std::string_view text) {
    appendBytes(out, std::as_bytes(std::span(text)));
}

/// The low `width` bytes of a number, least significant first.
inline void appendLittleEndian(Data& out, std::uint64_t number, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
        out.push_back(static_cast<std::byte>(number >> (8 * i)));
    }
}

inline void appendU32le(Data& out, std::uint32_t number) {
    appendLittleEndian(out, number, 4);
}

inline void appendU64le(Data& out, std::uint64_t number) {
    appendLittleEndian(out, number, 8);
}

inline void appendU64be(Data& out, std::uint64_t number) {
    for (std::size_t i = 8; i > 0; --i) {
        out.push_back(static_cast<std::byte>(number >> (8 * (i - 1))));
    }
}

} // namespace tolvane::platform
