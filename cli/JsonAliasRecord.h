#pragma once

#include "cli/JsonWriter.h"
#include "platform/bookmark/format/AliasRecord.h"

namespace tolvane::cli {

/// Writes a parsed alias record as one JSON object with that of its disk image in it; docs/json.md lists its
/// keys.
void writeAliasRecordJson(JsonWriter& json, const platform::AliasRecord& record);

/// Local time in the form "2022-12-12T23:13:54", without a zone; empty for dates without a calendar date.
std::string localTimeText(const platform::Date& date);

} // namespace tolvane::cli
