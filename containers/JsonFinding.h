#pragma once

#include "containers/Finding.h"
#include "platform/json/JsonWriter.h"

#include <cstddef>
#include <string_view>

namespace tolvane::containers {

/// A finding as one object, which docs/json.md describes. `file` is the container's name as bytes.
void writeFindingJson(
    platform::JsonWriter& json,
    std::string_view file,
    std::size_t index,
    std::string_view container,
    const Finding& finding);

} // namespace tolvane::containers
