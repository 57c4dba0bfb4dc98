#pragma once

#include "cli/JsonWriter.h"
#include "containers/Finding.h"

#include <cstddef>
#include <string_view>

namespace tolvane::cli {

/// The word for a kind: "bookmark", "alias", "url" or "origin".
std::string_view findingKindName(containers::FindingKind kind);

/// A finding as one object, which docs/json.md describes. `file` is the container's name as bytes.
void writeFindingJson(
    JsonWriter& json,
    std::string_view file,
    std::size_t index,
    std::string_view container,
    const containers::Finding& finding);

} // namespace tolvane::cli
