#pragma once

#include "cli/JsonWriter.h"
#include "tests/support/Streams.h"

#include <nlohmann/json.hpp>

#include <functional>
#include <string>

namespace tolvane::tests {

using Json = nlohmann::ordered_json;

/// What the function writes.
inline std::string writtenJson(const std::function<void(cli::JsonWriter&)>& write, bool ascii = false) {
    TextOutput stream;
    cli::Output output(stream);
    cli::JsonWriter json(output, ascii);
    write(json);
    json.finish();
    output.flush();
    return stream.text;
}

/// Whether a terminal can show every character without acting on one.
inline bool isPrintableAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= 0x20 && c < 0x7F; });
}

} // namespace tolvane::tests
