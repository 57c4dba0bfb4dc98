// Running something as a user whom permissions bind: tests often run as root, who may do everything.
#pragma once

#include <functional>

namespace tolvane::tests {

/// Runs the function in a child process, as nobody (65534) where the test runs as root and as the test's own
/// user otherwise. Answers what the function answered, which must be 0 to 255, or -1 when the child did not
/// get to its end.
int answerOfUnprivilegedChild(const std::function<int()>& function);

} // namespace tolvane::tests
