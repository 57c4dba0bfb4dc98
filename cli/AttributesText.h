#pragma once

#include "attributes/Explanation.h"
#include "attributes/StatusFactsInWords.h"
#include "verification/VerifyChecksums.h"

#include <string>
#include <vector>

namespace tolvane::cli {

/// An explained attribute as lines: title and name, the sentence, the fields, the notes. On a terminal
/// control characters in the name are escaped; the other texts have none.
std::string attributeLines(const attributes::Explanation& explanation, bool isTerminal);

/// The facts next to the attributes as lines: title, the grid of permissions, then as above.
std::string factLines(const attributes::StatusFactsInWords& facts);

/// Whether the content fits the checksums in attributes, one line for each.
std::string verifiedLines(const std::vector<verification::Verified>& verified);

} // namespace tolvane::cli
