#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Decodes UTF-8 that may be invalid. File and attribute names are bytes, so everything shown as text passes
/// through here.
namespace tolvane::platform {

/// The first character of a byte sequence.
struct DecodedCharacter {
    char32_t codePoint = 0; ///< U+FFFD where `valid` is false.
    std::size_t length = 0; ///< Bytes used: at least 1 unless the input was empty.
    bool valid = false;
};

/// Decodes the first character. An invalid sequence consumes its longest valid prefix, as the Unicode
/// standard recommends, so that each defect becomes one U+FFFD. Overlong forms, surrogates and code points
/// past U+10FFFF are invalid. Empty input gives length 0.
DecodedCharacter decodeFirstCharacter(std::string_view bytes);

/// True if the bytes are well-formed UTF-8. Empty text is valid; NUL is a character.
bool isValidUtf8(std::string_view bytes);

/// The bytes as valid UTF-8 for display: each invalid part becomes U+FFFD.
std::string shownText(std::string_view bytes);

/// Appends the UTF-8 form of a code point, which must be a Unicode scalar value.
void appendUtf8(std::string& text, char32_t codePoint);

} // namespace tolvane::platform
