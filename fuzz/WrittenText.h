/// The output of code that writes to a stream.
#pragma once

#include "fuzz/Fuzz.h"
#include "platform/services/Streams.h"
#include "platform/values/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>

namespace tolvane::fuzz {

/// A stream that stores its output.
class WrittenText final : public platform::OutputStream {
public:
    platform::Result<void> write(std::string_view bytes) override {
        text_ += bytes;
        return {};
    }

    bool isTerminal() const override { return false; }

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

/// Checks what must hold for all JSON that the terminal program prints.
inline void requireJsonLine(std::string_view text, bool ascii) {
    require(platform::isValidUtf8(text), "JSON is UTF-8");
    require(!text.contains('\n'), "JSON stands on one line");
    require(nlohmann::json::accept(text), "JSON can be read");
    const bool isAscii = std::ranges::all_of(text, [](char c) { return c >= ' ' && c < '\x7F'; });
    require(!ascii || isAscii, "JSON for a terminal is printable ASCII");
}

} // namespace tolvane::fuzz
