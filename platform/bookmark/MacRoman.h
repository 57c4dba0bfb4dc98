#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace tolvane::platform {

/// Bytes in the Mac's Roman encoding as UTF-8. Every byte is a character.
std::string textOfMacRoman(std::span<const std::byte> bytes);

} // namespace tolvane::platform
