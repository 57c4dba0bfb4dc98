#pragma once

#include "platform/services/Streams.h"
#include "platform/values/Error.h"

#include <optional>
#include <string>
#include <string_view>

namespace tolvane::cli {

/// Standard output, gathered into large writes between one flush and the next. The first failure sticks:
/// nothing is written after it, since a reader must not get the end of a text without its middle.
class Output {
public:
    /// `stream` outlives this object. What was not flushed is lost with it.
    explicit Output(platform::OutputStream& stream) : stream_(stream), isTerminal_(stream.isTerminal()) {}

    /// Adds text; a terminal gets it at once. False once writing has failed.
    bool write(std::string_view text);

    /// Writes out what was gathered. False once writing has failed.
    bool flush();

    const std::optional<platform::Error>& failure() const { return failure_; }
    bool isTerminal() const { return isTerminal_; }

private:
    platform::OutputStream& stream_;
    bool isTerminal_;
    std::string gathered_;
    std::optional<platform::Error> failure_;
};

} // namespace tolvane::cli
