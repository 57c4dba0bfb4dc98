/// Runs functions in child processes.
#pragma once

#include <functional>

namespace tolvane::tests {

/// Runs the function in a child process. Returns the function's result, which must be 0 to 255, or -1 if the
/// child did not finish.
int answerOfChild(const std::function<int()>& function);

/// The same as a user bound by permissions: as nobody (65534) if the test runs as root, and otherwise as the
/// test's user.
int answerOfUnprivilegedChild(const std::function<int()>& function);

} // namespace tolvane::tests
