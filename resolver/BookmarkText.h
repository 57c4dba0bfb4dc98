#pragma once

#include <string>

namespace tolvane::resolver {

/// The text without its spaces, line feeds and tabs, which is how base-64 text gets wrapped on its way
/// through mail and terminals. Every other character stays, carriage returns included.
std::string cleanedBookmarkText(std::string text);

} // namespace tolvane::resolver
