#pragma once

#include "platform/services/Streams.h"

#include <string_view>

namespace tolvane::cli {

/// Exit statuses of the program.
enum class ExitStatus { success = 0, failure = 1, wrongUsage = 2 };

/// Writes "tolvane-cli: message" and a line end, as one line whatever the message holds: on a terminal its
/// control characters are shown escaped, elsewhere only where a line feed would break the line. False when
/// nobody can be told any more; who started the program with standard error closed did not want to be told.
bool complain(platform::OutputStream& errors, std::string_view message);

class Output;

/// Writes out what was gathered and gives the status; where writing failed, complains of it and gives
/// failure.
ExitStatus finished(Output& output, platform::OutputStream& errors, ExitStatus status);

} // namespace tolvane::cli
