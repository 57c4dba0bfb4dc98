#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// The path that this script reveals:
///
///     set thePath to POSIX file "PATH"
///     tell application "Finder" to reveal thePath
///
/// The script's author puts the path between the quotation marks as it is. Inside them the script language
/// knows the escapes \" \\ \n \r \t, and takes every other byte, line ends too, as it stands; after a
/// quotation mark of the path's own it accepts nothing but comments. So the path returned need not be the one
/// that was put in.
///
/// Nothing when the script does not compile because of the path, or is any other script.
std::optional<std::string> pathOfRevealScript(std::string_view script);

} // namespace tolvane::platform
