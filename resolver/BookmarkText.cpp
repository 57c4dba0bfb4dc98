#include "resolver/BookmarkText.h"

namespace tolvane::resolver {

std::string cleanedBookmarkText(std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n' || c == '\t'; });
    return text;
}

} // namespace tolvane::resolver
