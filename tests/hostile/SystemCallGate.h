// A gate for the system calls by which a program reads from the file system: each waits in the kernel until
// the test has seen it. So the test can change the file system between any two calls, or make one fail.
#pragma once

#include "tests/support/Process.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tolvane::tests {

/// A call that the program has not made yet.
struct PendingCall {
    /// "statx" and so on.
    std::string name;
    /// The path in its arguments, if any.
    std::string path;
};

/// Returns 0 to let the call pass, and otherwise the error that the program gets instead.
using Gate = std::function<int(const PendingCall& call)>;

/// Why this does not work here; nothing if it does.
std::optional<std::string> obstacleToGates();

/// Runs the program with nothing on standard input. It is killed after a minute without such a call.
ProcessOutcome runThroughGate(const std::vector<std::string>& command, const Gate& gate);

} // namespace tolvane::tests
