/// Runs functions as a user bound by permissions, since tests often run as root.
#pragma once

#include <functional>

namespace tolvane::tests {

/// Runs the function in a child process, as nobody (65534) if the test runs as root and otherwise as the
/// test's user. Returns the function's result, which must be 0 to 255, or -1 if the child did not finish.
int answerOfUnprivilegedChild(const std::function<int()>& function);

} // namespace tolvane::tests
