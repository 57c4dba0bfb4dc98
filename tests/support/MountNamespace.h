/// Mounts that only a child process sees.
#pragma once

#include <functional>

namespace tolvane::tests {

/// Returned by `answerInMountNamespace` if the system does not let a test mount anything; a function may
/// return it too if its own mount is refused.
inline constexpr int noMounting = 77;

/// Runs the function in a child process with its own mounts, which vanish with it. As an ordinary user the
/// child is root of a user namespace. Returns the function's result, 0 to 255, or -1 if the child did not
/// finish.
int answerInMountNamespace(const std::function<int()>& function);

} // namespace tolvane::tests
