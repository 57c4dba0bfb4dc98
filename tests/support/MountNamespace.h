// Mounting things without anybody noticing: in a child process that sees mounts of its own.
#pragma once

#include <functional>

namespace tolvane::tests {

/// What `answerInMountNamespace` answers where the system does not let a test mount anything; a function may
/// answer the same when its own mounting is refused.
inline constexpr int noMounting = 77;

/// Runs the function in a child process whose mounts are its own, as far as the system permits: they all go
/// when the child ends. As an ordinary user the child is root of a user namespace. Answers what the function
/// answered, 0 to 255, or -1 when the child did not get to its end.
int answerInMountNamespace(const std::function<int()>& function);

} // namespace tolvane::tests
