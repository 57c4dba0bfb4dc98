#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// Standard base-64 (the RFC 4648 alphabet with padding), in one line without line breaks.
std::string base64EncodedString(std::span<const std::byte> bytes);

/// Why a text is not valid base-64: the offset, and what was expected there.
struct Base64Fault {
    std::size_t offset = 0;
    std::string_view expected;

    friend bool operator==(const Base64Fault&, const Base64Fault&) = default;
};

/// The first place where a text is not valid base-64; nothing if `base64DecodedData` accepts it.
std::optional<Base64Fault> base64Fault(std::string_view text);

/// Decodes standard base-64 strictly (RFC 4648): groups of four characters, padding only at the end, no
/// blanks or line breaks, unused bits zero. Every accepted text is therefore what `base64EncodedString`
/// returns for the result. Nothing for any other text.
std::optional<Data> base64DecodedData(std::string_view text);

} // namespace tolvane::platform
