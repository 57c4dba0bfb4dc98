#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// The text in Unicode's normalisation form C, in which a letter with its accents is one character where
/// there is one: so names can be compared that Macs store in several forms. Nothing if it is not valid UTF-8.
/// The result may have another length than the text.
std::optional<std::string> composedText(std::string_view utf8);

} // namespace tolvane::platform
