#pragma once

#include "platform/values/Value.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace tolvane::platform {

/// Reads numbers and runs of bytes from untrusted data.
///
/// Every read is checked. After the first read that does not fit, the cursor stays where it is and all reads
/// return zeros or empty runs, so a reader can read several fields and check once. The bytes must outlive the
/// cursor and the runs it returned.
class ByteCursor {
public:
    explicit ByteCursor(std::span<const std::byte> bytes) : bytes_(bytes) {}

    /// The next `count` bytes; empty if fewer are left.
    std::span<const std::byte> take(std::size_t count) {
        if (failed() || count > bytes_.size() - position_) {
            failedAt_ = failedAt_.value_or(position_);
            return {};
        }
        return bytes_.subspan(std::exchange(position_, position_ + count), count);
    }

    /// Moves to an offset from the first byte. Moving past the end is a failure.
    void seek(std::size_t position);

    /// Numbers of 1 to 8 bytes.
    std::uint64_t littleEndian(std::size_t width) {
        const std::span<const std::byte> bytes = take(width);
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            number |= std::to_integer<std::uint64_t>(bytes[i]) << (8 * i);
        }
        return number;
    }
    std::uint64_t bigEndian(std::size_t width) {
        std::uint64_t number = 0;
        for (const std::byte byte : take(width)) {
            number = (number << 8U) | std::to_integer<std::uint64_t>(byte);
        }
        return number;
    }

    std::uint8_t u8() { return static_cast<std::uint8_t>(littleEndian(1)); }
    std::uint32_t u32le() { return ofWidth<std::uint32_t>(); }
    std::uint64_t u64le() { return ofWidth<std::uint64_t>(); }
    std::uint16_t u16be() { return static_cast<std::uint16_t>(bigEndian(2)); }
    std::uint32_t u24be() { return static_cast<std::uint32_t>(bigEndian(3)); }
    std::uint32_t u32be() { return static_cast<std::uint32_t>(bigEndian(4)); }

    std::size_t position() const { return position_; }
    std::size_t remaining() const { return bytes_.size() - position_; }

    /// The position of the first failed read.
    std::optional<std::size_t> failedAt() const { return failedAt_; }
    bool failed() const { return failedAt_.has_value(); }

private:
    /// Without a loop: most of what is read are such numbers.
    template <typename Number>
    Number ofWidth() {
        const std::span<const std::byte> bytes = take(sizeof(Number));
        if (bytes.empty()) {
            return 0;
        }
        Number number = 0;
        std::memcpy(&number, bytes.data(), sizeof number);
        return std::endian::native == std::endian::big ? std::byteswap(number) : number;
    }

    std::span<const std::byte> bytes_;
    std::size_t position_ = 0;
    std::optional<std::size_t> failedAt_;
};

// The counterpart: appending to growing bytes.

inline void appendBytes(Data& out, std::span<const std::byte> bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

inline void appendText(Data& out, std::string_view text) {
    appendBytes(out, std::as_bytes(std::span(text)));
}

template <typename Number>
std::array<std::byte, sizeof(Number)> littleEndianBytes(Number number) {
    return std::bit_cast<std::array<std::byte, sizeof(Number)>>(
        std::endian::native == std::endian::big ? std::byteswap(number) : number);
}

/// The low `width` bytes of a number, least significant first.
inline void appendLittleEndian(Data& out, std::uint64_t number, std::size_t width) {
    std::array<std::byte, sizeof number> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::byte>(number >> (8 * i));
    }
    appendBytes(out, std::span(bytes).first(width));
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
