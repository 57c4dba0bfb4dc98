// The built terminal program, and how the tests call it.
#pragma once

#include "tests/support/Process.h"

#include <string>
#include <vector>

namespace tolvane::tests {

/// "tolvane-cli" with these arguments; `setup` has everything else.
ProcessSetup tolvane(std::vector<std::string> arguments, ProcessSetup setup = {});

/// "tolvane-cli report" on names that are passed through standard input, so that there may be any number of
/// them.
ProcessSetup reportOn(const std::vector<std::string>& names, bool json = false);

/// What "tolvane-cli" prints for these arguments; a failure or a complaint fails the test.
std::string printed(const std::vector<std::string>& arguments, const std::string& input = {});

/// Whether the run failed as it should: status 1, one line of complaint, and no output.
bool isComplaint(const ProcessOutcome& outcome);

/// Expects that failure, with this complaint after the program's name.
void expectComplaint(const ProcessOutcome& outcome, const std::string& complaint);

/// The names as --files0-from takes them.
std::string nulSeparated(const std::vector<std::string>& names);

/// Runs the program with a terminal as one of its two output streams; what the terminal showed replaces the
/// contents of that stream.
ProcessOutcome runOnTerminal(ProcessSetup setup, bool isOutput);

} // namespace tolvane::tests
