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

/// Exit statuses of the program.
enum class ExitStatus { success = 0, failure = 1, wrongUsage = 2 };

/// Writes "tolvane-cli: message" as one line. Control characters are escaped on a terminal; elsewhere only if
/// there is a line feed. False if standard error fails; a program started with it closed did not want it.
bool complain(platform::OutputStream& errors, std::string_view message);

/// Flushes and returns the status; if writing failed, reports that and returns failure.
ExitStatus finished(Output& output, platform::OutputStream& errors, ExitStatus status);

} // namespace tolvane::cli
