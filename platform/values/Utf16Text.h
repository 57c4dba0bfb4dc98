#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// Converts UTF-16, unit by unit, to UTF-8, with U+FFFD for unpaired surrogates.
class Utf16Text {
public:
    void append(char16_t unit);

    /// Appends what is UTF-8 already.
    void append(std::string_view text);

    /// The text, and begins anew.
    std::string take();

private:
    void end();

    std::string text_;
    char16_t first_ = 0; ///< The first half of a pair, while the other has not come.
};

/// UTF-16 with the more significant byte first; an odd byte at the end is left out.
std::string textOfBigEndianUtf16(std::span<const std::byte> bytes);

} // namespace tolvane::platform
