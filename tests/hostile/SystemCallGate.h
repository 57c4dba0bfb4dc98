// A gate that every question of a program about files has to pass: the call waits in the kernel until the
// test has looked at it, so that the test can change the file system between any two calls, or have one fail.
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
    /// The path that it names; empty where it names none.
    std::string path;
};

/// What becomes of a call: 0 lets it pass, any other number is the error that the program gets instead.
using Gate = std::function<int(const PendingCall& call)>;

/// Why no calls can be held here; nothing when they can.
std::optional<std::string> obstacleToGates();

/// Runs the program with nothing on standard input. One that goes on for a minute without asking anything is
/// killed, which the outcome tells by its signal.
ProcessOutcome runThroughGate(const std::vector<std::string>& command, const Gate& gate);

} // namespace tolvane::tests
