// The system calls of a run of the program, as strace(1) writes them down.
#pragma once

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tolvane::tests {

struct SystemCall {
    /// "openat" and so on.
    std::string name;
    /// What stands after it: the arguments and the result.
    std::string details;
};

/// Runs the program under strace: the calls of each thread in their order, one thread after the other. A run
/// that does not end well fails the test.
std::vector<SystemCall> tracedRun(ProcessSetup setup);

/// Skips where no calls can be traced.
class TraceTest : public testing::Test {
protected:
    void SetUp() override;
    TemporaryFolder folder;
};

} // namespace tolvane::tests
