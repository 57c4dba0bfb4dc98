#pragma once

#include <optional>

namespace tolvane::platform {

/// The character of a byte in the NextStep character set; nothing for the two bytes that have none.
std::optional<char16_t> nextStepCharacter(unsigned char byte);

} // namespace tolvane::platform
