/// Mounts that only a child process sees.
#pragma once

#include <functional>
#include <string>
#include <sys/mount.h> // For what tests mount themselves.

namespace tolvane::tests {

/// Runs the function in a child process with its own mounts, which vanish with it. As an ordinary user the
/// child is root of a user namespace. The function's failures fail the test, which is skipped if the system
/// lets a test mount nothing, or the function returns that it could not mount something.
void expectWithMounts(const std::function<bool()>& function);

/// Mounts an empty volume in memory.
bool mountMemory(
    const std::string& place, const char* name = "tolvane-test", const char* options = "size=64k");

/// Shows a folder or file at another place, too.
bool mountAgain(const std::string& from, const std::string& to);

} // namespace tolvane::tests
