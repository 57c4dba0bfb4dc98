#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

namespace tolvane::platform {

/// Removes the text before the next separator, and the separator, from the front of `rest` and returns it.
inline std::string_view takeUntil(char separator, std::string_view& rest) {
    const std::string_view taken = rest.substr(0, rest.find(separator));
    rest.remove_prefix(std::min(taken.size() + 1, rest.size()));
    return taken;
}

/// The pieces of a text between separators, empty ones left out: the components of a path at '/', the names
/// in a list of extended attributes at '\0'. They lie in the text.
inline std::vector<std::string_view> nonEmptyPieces(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        if (const std::string_view piece = takeUntil(separator, text); !piece.empty()) {
            pieces.push_back(piece);
        }
    }
    return pieces;
}

} // namespace tolvane::platform
