#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Comparing and storing type identifiers and extensions without regard to case. Lower-casing follows Unicode
/// in the root locale, so the same file has the same type identifier in every language.
namespace tolvane::platform {

constexpr char asciiLowerCase(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Differences of case outside ASCII count as differences.
bool equalIgnoringAsciiCase(std::string_view left, std::string_view right);

/// Nothing when the text is not valid UTF-8. The result may have another length than the text.
std::optional<std::string> lowerCase(std::string_view utf8);

} // namespace tolvane::platform
