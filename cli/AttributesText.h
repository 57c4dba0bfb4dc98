#pragma once

#include "attributes/Explanation.h"

#include <string>

namespace tolvane::cli {

/// An explained attribute as lines: title and name, the sentence, the fields, the notes. On a terminal
/// control characters in the name are escaped; the other texts have none.
std::string attributeLines(const attributes::Explanation& explanation, bool isTerminal);

} // namespace tolvane::cli
