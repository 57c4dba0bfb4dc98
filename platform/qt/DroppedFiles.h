#pragma once

#include "platform/URL.h"

#include <string_view>
#include <vector>

namespace tolvane::platform {

/// The file URLs in the text of a dropped list of URIs ("text/uri-list": one a line, comments begin with
/// "#"). What is no file URL is left out. The text is read as bytes, so names that are no UTF-8 survive.
std::vector<URL> fileURLsInList(std::string_view list);

} // namespace tolvane::platform
