#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Reading UTF-8 that may be damaged. File names on Linux are bytes and attribute names arrive from the
/// kernel, so whatever is shown as text passes through here first.
namespace tolvane::platform {

/// What one look at the front of a byte sequence found.
struct DecodedCharacter {
    char32_t codePoint = 0; ///< U+FFFD where `valid` is false.
    std::size_t length = 0; ///< Bytes used: at least 1 unless the input was empty.
    bool valid = false;
};

/// Decodes the first character. An invalid sequence uses up its longest well-begun part, as the Unicode
/// standard recommends, so that each damaged spot becomes one U+FFFD. Overlong forms, surrogates and code
/// points past U+10FFFF are invalid. Empty input gives length 0.
DecodedCharacter decodeFirstCharacter(std::string_view bytes);

/// True when every byte belongs to a well-formed character. Empty text is valid; NUL is a character.
bool isValidUtf8(std::string_view bytes);

/// The bytes as text that can be shown: unchanged where they are UTF-8, with U+FFFD in place of each part
/// that cannot be read. The result is always valid UTF-8.
std::string shownText(std::string_view bytes);

/// Appends the UTF-8 form of a code point, which must be a Unicode scalar value.
void appendUtf8(std::string& text, char32_t codePoint);

} // namespace tolvane::platform
