#include "tests/support/Mounting.h"

#include "tests/support/Unprivileged.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <sched.h>
#include <sys/mount.h>
#include <sys/types.h>
#include <unistd.h>

namespace tolvane::tests {

namespace {

bool write(const char* file, const std::string& text) {
    std::ofstream stream(file);
    stream << text << std::flush;
    return stream.good();
}

bool getOwnMounts() {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            return false;
        }
        // The process may do nothing before its user and group are mapped.
        const bool isMapped = write("/proc/self/setgroups", "deny")
                              && write("/proc/self/uid_map", "0 " + std::to_string(user) + " 1")
                              && write("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
        if (!isMapped) {
            return false;
        }
    }
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

} // namespace

void expectWithMounts(const std::function<bool()>& function) {
    constexpr int noMounting = 77;
    const int answer = answerOfChild([&] {
        return !getOwnMounts() || !function() ? noMounting : testing::Test::HasFailure() ? 1 : 0;
    });
    if (answer == noMounting) {
        GTEST_SKIP() << "nothing can be mounted here";
    }
    EXPECT_EQ(answer, 0);
}

bool mountMemory(const std::string& place, const char* name, const char* options) {
    return mount(name, place.c_str(), "tmpfs", 0, options) == 0;
}

bool mountAgain(const std::string& from, const std::string& to) {
    return mount(from.c_str(), to.c_str(), nullptr, MS_BIND, nullptr) == 0;
}

} // namespace tolvane::tests
