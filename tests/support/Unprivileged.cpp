#include "tests/support/Unprivileged.h"

#include <cerrno>
#include <cstdlib>
#include <grp.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tolvane::tests {

namespace {

bool becomeNobody() {
    constexpr uid_t nobody = 65534;
    return setgroups(0, nullptr) == 0 && setresgid(nobody, nobody, nobody) == 0
           && setresuid(nobody, nobody, nobody) == 0;
}

} // namespace

int answerOfChild(const std::function<int()>& function) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(function());
    }
    int status = 0;
    while (child > 0 && waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return -1;
        }
    }
    return child > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int answerOfUnprivilegedChild(const std::function<int()>& function) {
    return answerOfChild([&] {
        if (geteuid() == 0 && !becomeNobody()) {
            std::abort();
        }
        return function();
    });
}

} // namespace tolvane::tests
