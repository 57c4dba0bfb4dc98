#pragma once

#include <string>

/// Characters that a reader does not see for what they are. A name that holds them can look like another, so
/// wherever text of others is shown, each is written out in their place.
namespace tolvane::platform {

/// True for what is neither drawn nor a mere blank, and for what changes how its neighbours are drawn: the
/// controls (tabulator and line feed among them), characters without width, marks and overrides of the
/// writing direction, separators of lines, fillers, tags, noncharacters. No-break spaces are blanks.
/// Variation selectors and the visible signs of this kind in some scripts are left alone.
bool isHiddenCharacter(char32_t codePoint);

/// What to call a hidden character: "CR" and the like for ASCII controls, "U+202E" for all others. ASCII.
std::string hiddenCharacterName(char32_t codePoint);

} // namespace tolvane::platform
