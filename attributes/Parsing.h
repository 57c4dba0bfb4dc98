/// Small pieces that several families read.
#pragma once

#include "platform/values/Date.h"

#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::attributes {

/// The number that is the whole text, without sign (for unsigned types), blanks or prefix.
template <std::integral Number>
std::optional<Number> parsedNumber(std::string_view text, int base = 10) {
    Number number{};
    const char* const begin = std::to_address(text.begin());
    const char* const end = std::to_address(text.end());
    const auto [stopped, error] = std::from_chars(begin, end, number, base);
    return error == std::errc() && stopped == end ? std::optional(number) : std::nullopt;
}

/// The pieces between separators, empty ones included; always at least one.
std::vector<std::string_view> piecesOf(std::string_view text, char separator);

/// The text without blanks, tabs and line ends at both ends.
std::string_view trimmed(std::string_view text);

/// At most so many bytes of the text, at whole characters, with "…" for the rest.
std::string shortened(std::string_view text, std::size_t longest = 160);

/// A text of UTF-16 units, with U+FFFD for unpaired surrogates.
std::string textOfUtf16(std::span<const std::byte> bytes, bool bigEndian = false);

/// Whether the text is well-formed UTF-8 without NUL.
bool isText(std::string_view bytes);

bool isHexText(std::string_view text);

/// Whether the text has the form of a UUID, 36 characters with hyphens.
bool isUUIDText(std::string_view text);

/// The time of Windows: 100 ns since 1601 UTC.
platform::Date windowsDate(std::uint64_t ticks);

/// "seconds.nanoseconds" since 1970, or seconds alone.
std::optional<platform::Date> dateInSecondsText(std::string_view text);

/// Microseconds since 1970.
platform::Date dateOfMicroseconds(std::uint64_t microseconds);

/// A GUID of Windows, whose first three parts are little-endian, in the order in which it is written.
std::array<std::byte, 16> guidInWrittenOrder(std::span<const std::byte> sixteenBytes);

/// "rwxr-xr-x", with the special bits where `ls` shows them.
std::string permissionLetters(std::uint32_t mode);

/// "regular file", by the bits of a mode; empty if they name no kind.
std::string_view kindOfMode(std::uint32_t mode);

} // namespace tolvane::attributes
