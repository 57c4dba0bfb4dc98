#pragma once

#include "tests/support/MountNamespace.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <sys/mount.h>

namespace tolvane::tests {

/// Runs the function in a process with its own mounts. Its failures fail the test, which is skipped if the
/// function returns that it could not mount something.
inline void expectWithMounts(const std::function<bool()>& function) {
    const int answer = answerInMountNamespace([&] {
        return !function() ? noMounting : testing::Test::HasFailure() ? 1 : 0;
    });
    if (answer == noMounting) {
        GTEST_SKIP() << "nothing can be mounted here";
    }
    EXPECT_EQ(answer, 0);
}

/// Mounts an empty volume in memory.
inline bool mountMemory(
    const std::string& place, const char* name = "tolvane-test", const char* options = "size=64k") {
    return mount(name, place.c_str(), "tmpfs", 0, options) == 0;
}

/// Shows a folder or file at another place, too.
inline bool mountAgain(const std::string& from, const std::string& to) {
    return mount(from.c_str(), to.c_str(), nullptr, MS_BIND, nullptr) == 0;
}

} // namespace tolvane::tests
