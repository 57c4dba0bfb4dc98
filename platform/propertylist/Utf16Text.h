#pragma once

#include <string>
#include <string_view>

namespace tolvane::platform {

/// Makes UTF-8 of UTF-16, one unit after the other. U+FFFD stands for each surrogate that lacks its other
/// half.
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

} // namespace tolvane::platform
