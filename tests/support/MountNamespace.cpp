#include "tests/support/MountNamespace.h"

#include "tests/support/Unprivileged.h"

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

int answerInMountNamespace(const std::function<int()>& function) {
    return answerOfChild([&] { return getOwnMounts() ? function() : noMounting; });
}

} // namespace tolvane::tests
