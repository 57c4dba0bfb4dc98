#pragma once

#include "attributes/Explanation.h"
#include "cli/JsonWriter.h"

namespace tolvane::cli {

/// Writes an explained attribute as one JSON object; docs/json.md lists its keys.
void writeExplanationJson(JsonWriter& json, const attributes::Explanation& explanation);

} // namespace tolvane::cli
