#pragma once

#include "cli/JsonWriter.h"
#include "details/GatherDetails.h"
#include "inspect/SizeData.h"

#include <string_view>

namespace tolvane::cli {

/// Writes an item's details as one JSON object: every text under its field's name, in the window's order, an
/// absent one as an empty text, and typed "facts", null where unknown. docs/json.md lists them.
void writeReportJson(
    JsonWriter& json,
    std::string_view title,
    const inspect::SizeData& sizes,
    const details::GatheredDetails& details);

} // namespace tolvane::cli
