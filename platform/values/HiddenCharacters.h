#pragma once

#include <string>

/// Characters that are invisible or misleading. A name that contains them can look like another, so they are
/// written out wherever such text is shown.
namespace tolvane::platform {

/// True for characters that are invisible without being a blank, or that change how their neighbours look:
/// controls (tab and line feed too), zero-width characters, direction marks and overrides, line separators,
/// fillers, tags, noncharacters. No-break spaces are blanks. Variation selectors and visible format
/// characters of some scripts are not hidden.
bool isHiddenCharacter(char32_t codePoint);

/// The name of a hidden character in ASCII: "CR" and the like for ASCII controls, otherwise "U+202E".
std::string hiddenCharacterName(char32_t codePoint);

} // namespace tolvane::platform
