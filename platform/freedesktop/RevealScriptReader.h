#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvane::platform {

/// The path that a script of these two statements names, read as the script language reads them:
///
///     set thePath to POSIX file "PATH"
///     tell application "Finder" to reveal thePath
///
/// Whoever writes the script puts the path between the quotation marks as it is. Inside them the language
/// knows the escapes \" \\ \n \r \t, and takes every other byte, line ends too, as it stands; so the path
/// answered need not be the one that was put in. Between words it does not mind blanks, comments, blank lines
/// and capitals.
///
/// Nothing when the script does not compile, or says anything else. Empty when it names an empty path.
std::optional<std::string> pathOfRevealScript(std::string_view script);

} // namespace tolvane::platform
