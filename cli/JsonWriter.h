#pragma once

#include "cli/Output.h"
#include "platform/json/JsonWriter.h"

#include <string_view>

namespace tolvane::cli {

/// Writes JSON to the program's output.
class JsonWriter final : public platform::JsonWriter {
public:
    /// With `ascii` everything past ASCII is escaped. `output` outlives the writer.
    JsonWriter(Output& output, bool ascii)
        : platform::JsonWriter([&output](std::string_view piece) { output.write(piece); }, ascii) {}
};

} // namespace tolvane::cli
