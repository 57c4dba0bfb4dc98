#pragma once

#include "cli/JsonWriter.h"
#include "containers/Finding.h"

#include <cstddef>
#include <string_view>

namespace tolvane::cli {

/// The word for a kind: "bookmark", "alias", "url" or "origin".
std::string_view findingKindName(containers::FindingKind kind);

/// Local time in the form "2022-12-12T23:13:54", without a zone; empty for dates without a calendar date.
std::string localTimeText(const platform::Date& date);

/// A finding as one object, which docs/json.md describes. `file` is the container's name as bytes.
void writeFindingJson(
    JsonWriter& json,
    std::string_view file,
    std::size_t index,
    std::string_view container,
    const containers::Finding& finding);

} // namespace tolvane::cli
