#pragma once

#include <string>
#include <string_view>

namespace tolvane::details {

/// The text that a shell (bash, zsh, ksh) takes for exactly these bytes, as one word: as it is where that is
/// safe, else in single quotes, and in the form $'…' where there are bytes that are not UTF-8 or characters
/// that are not seen.
std::string shellWord(std::string_view bytes);

} // namespace tolvane::details
