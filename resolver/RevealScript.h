#pragma once

#include <string>
#include <string_view>

namespace tolvane::resolver {

/// The script of two lines that shows the item of this path in the file manager, selected. The path goes in
/// byte for byte, without escapes: a quote or backslash in it means to the script what it means in any of its
/// texts, so that such a script fails or names another item.
std::string revealScript(std::string_view path);

} // namespace tolvane::resolver
