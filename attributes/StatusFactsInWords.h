#pragma once

#include "attributes/Explanation.h"
#include "platform/values/StatusFacts.h"

#include <string>
#include <vector>

namespace tolvane::attributes {

/// What people look up next to extended attributes: who may do what, in letters, words and as a grid, the
/// flags that `lsattr` lists, the allocated size, and two dates.
struct StatusFactsInWords {
    Explanation words; ///< Without a name, since these facts are in no attribute.
    /// Who (owner, group, others) may do what: rows of cells, the first with the headings, and the last cell
    /// with a special bit.
    std::vector<std::vector<std::string>> cells;
    /// The same as lines for a font whose characters are equally wide.
    std::vector<std::string> grid;
};

/// `hasAccessList` is whether the item has a POSIX access control list besides its permissions, whose mask
/// the group's permissions then are. Accounts are named by `questions`.
StatusFactsInWords explainFacts(
    const platform::StatusFacts& facts, bool hasAccessList, const Questions& questions = {});

} // namespace tolvane::attributes
