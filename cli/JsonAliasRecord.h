#pragma once

#include "cli/JsonWriter.h"
#include "platform/bookmark/format/AliasRecord.h"

namespace tolvane::cli {

/// Writes a parsed alias record as one JSON object with that of its disk image in it; docs/json.md lists its
/// keys.
void writeAliasRecordJson(JsonWriter& json, const platform::AliasRecord& record);

} // namespace tolvane::cli
