#pragma once

#include "platform/Value.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// Standard base-64 (the RFC 4648 alphabet with padding), in one line without line breaks.
std::string base64EncodedString(std::span<const std::byte> bytes);

/// The bytes of a text in standard base-64, read strictly as RFC 4648 says: whole groups of four characters
/// of the alphabet, padding in the last one where it is due, and nothing else, line breaks and blanks
/// included. Bits that a shorter last group leaves over must be zero. So every accepted text is the one that
/// `base64EncodedString` makes of the answer. Nothing for any other text.
std::optional<Data> base64DecodedData(std::string_view text);

} // namespace tolvane::platform
