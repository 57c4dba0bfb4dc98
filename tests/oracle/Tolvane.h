// The built program, and how the tests call it.
#pragma once

#include "tests/support/Process.h"

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::tests {

/// "tolvane-cli" with these arguments.
ProcessSetup tolvane(std::vector<std::string> arguments);

/// "tolvane-cli report" on names that reach it through standard input, so that there may be any number of
/// them.
ProcessSetup reportOn(const std::vector<std::string>& names, bool json = false);

/// The names as --files0-from takes them.
std::string nulSeparated(const std::vector<std::string>& names);

/// Runs the program with a terminal as one of its two output streams; what it showed stands in place of what
/// the stream would have held.
ProcessOutcome runOnTerminal(ProcessSetup setup, bool isOutput);

/// True when there is nothing that a terminal would act on, but for line feeds.
bool isHarmless(std::string_view text);

} // namespace tolvane::tests
