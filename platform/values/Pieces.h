#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

namespace tolvane::platform {

/// The pieces of a text between separators, empty ones left out: the components of a path at '/', the names
/// in a list of extended attributes at '\0'. They lie in the text.
inline std::vector<std::string_view> nonEmptyPieces(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, text.find(separator));
        if (!piece.empty()) {
            pieces.push_back(piece);
        }
        text.remove_prefix(std::min(piece.size() + 1, text.size()));
    }
    return pieces;
}

} // namespace tolvane::platform
