// A gate for the system calls by which a program reads from the file system: each waits in the kernel until
// the test has seen it. So the test can change the file system between any two calls, or make one fail.
#pragma once

#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include <functional>
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

/// Runs the program with nothing on standard input. It is killed after a minute without such a call.
ProcessOutcome runThroughGate(const std::vector<std::string>& command, const Gate& gate);

/// Skips where system calls cannot be held.
class GateTest : public testing::Test {
protected:
    void SetUp() override;
};

} // namespace tolvane::tests
