#pragma once

#include "platform/Value.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// Standard base-64 (the RFC 4648 alphabet with padding), in one line without line breaks.
std::string base64EncodedString(std::span<const std::byte> bytes);

/// Why a text is no base-64: the offset in it, and what was expected there, in words for people.
struct Base64Fault {
    std::size_t offset = 0;
    std::string_view expected;

    friend bool operator==(const Base64Fault&, const Base64Fault&) = default;
};

/// The first place where a text is no standard base-64; nothing exactly where `base64DecodedData` gives
/// bytes.
std::optional<Base64Fault> base64Fault(std::string_view text);

/// The bytes of a text in standard base-64, read strictly as RFC 4648 says: whole groups of four characters
/// of the alphabet, padding in the last one where it is due, and nothing else, line breaks and blanks
/// included. Bits that a shorter last group leaves over must be zero. So every accepted text is the one that
/// `base64EncodedString` makes of the answer. Nothing for any other text.
std::optional<Data> base64DecodedData(std::string_view text);

} // namespace tolvane::platform
