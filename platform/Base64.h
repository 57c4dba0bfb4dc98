#pragma once

#include "platform/Value.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// Standard base-64 (the RFC 4648 alphabet with padding), in one line without line breaks.
std::string base64EncodedString(std::span<const std::byte> bytes);

/// The bytes of standard base-64 text; empty text gives no bytes. Nothing when a character is outside the
/// alphabet, white space and line ends included, or the padding is missing or misplaced. Bits of the last
/// character that belong to no byte are disregarded.
std::optional<Data> base64DecodedData(std::string_view text);

} // namespace tolvane::platform
