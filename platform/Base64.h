#pragma once

#include "platform/Value.h"

#include <span>
#include <string>

namespace tolvane::platform {

/// Standard base-64 (the RFC 4648 alphabet with padding), in one line without line breaks.
std::string base64EncodedString(std::span<const std::byte> bytes);

} // namespace tolvane::platform
