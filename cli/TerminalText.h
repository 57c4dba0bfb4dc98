#pragma once

#include "details/Report.h"

#include <string>
#include <string_view>

/// Texts as a terminal may be shown them. A terminal acts on control characters, and characters that are not
/// seen themselves change what is read, so names could pretend to be something else.
namespace tolvane::cli {

/// One line of text: hidden characters (see `isHiddenCharacter`) and bytes that are not UTF-8 appear as \n,
/// \t, \r, \xNN or \u{N}; a backslash is doubled, so that two different texts never look the same.
std::string terminalLine(std::string_view bytes);

/// Text with line feeds as layout and backslashes already escaped: both stay; otherwise the same.
std::string terminalLines(std::string_view bytes);

/// A report's texts as a terminal may be shown them.
details::ReportFields terminalFields(details::ReportFields fields);

} // namespace tolvane::cli
