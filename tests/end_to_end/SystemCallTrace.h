// The system calls of a run of the program, as strace(1) writes them down.
#pragma once

#include "tests/support/Process.h"

#include <optional>
#include <string>
#include <vector>

namespace tolvane::tests {

struct SystemCall {
    /// "openat" and so on.
    std::string name;
    /// What stands after it: the arguments and the result.
    std::string details;
};

/// Why no calls can be traced here; nothing when they can.
std::optional<std::string> obstacleToTracing();

/// Runs the program under strace. A run that does not end well fails the test.
std::vector<SystemCall> tracedRun(ProcessSetup setup);

} // namespace tolvane::tests
