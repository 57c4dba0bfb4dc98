#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace tolvane::platform {

/// Decodes Mac Roman; every byte is a character.
std::string textOfMacRoman(std::span<const std::byte> bytes);

} // namespace tolvane::platform
