#pragma once

#include "attributes/Explanation.h"
#include "cli/JsonWriter.h"
#include "verification/VerifyChecksums.h"

#include <vector>

namespace tolvane::cli {

/// Writes an explained attribute as one JSON object; docs/json.md lists its keys.
void writeExplanationJson(JsonWriter& json, const attributes::Explanation& explanation);

/// Whether checksums fit, as a JSON array.
void writeVerifiedJson(JsonWriter& json, const std::vector<verification::Verified>& verified);

} // namespace tolvane::cli
