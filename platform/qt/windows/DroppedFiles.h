#pragma once

#include "platform/values/URL.h"

#include <string_view>
#include <vector>

namespace tolvane::platform {

/// The file URLs in the text of a dropped list of URIs ("text/uri-list": one a line, comments begin with
/// "#"). What is not a file URL is left out. The text is read as bytes, so names that are not UTF-8 survive.
std::vector<URL> fileURLsInList(std::string_view list);

} // namespace tolvane::platform
