// The system calls that a report makes for each file, in its order, and nothing besides: what no program can
// beat that looks as often. The calls are made as C would, and nothing of what they tell is kept or printed.
//
// Usage: tolvane-bench-floor LIST, a file of absolute or relative names, each followed by a NUL

#include <array>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

using Path = std::array<char, PATH_MAX>;
/// Stands for the blocks in which reports are written, and takes attributes.
using Block = std::array<char, 65536>;

void look(const char* path) {
    struct statx status{};
    static_cast<void>(
        statx(AT_FDCWD, path, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, STATX_ALL | STATX_MNT_ID, &status));
}

/// Each step of an absolute path, from "/" down to the item.
void lookAtSteps(const char* path) {
    Path step{};
    look("/");
    for (std::size_t length = 1; path[length] != '\0'; ++length) {
        const bool isEnd = path[length + 1] == '\0' || path[length + 1] == '/';
        if (isEnd && path[length] != '/') {
            std::memcpy(step.data(), path, length + 1);
            step[length + 1] = '\0';
            look(step.data());
        }
    }
}

void readAttributes(const char* path, Block& block) {
    std::array<char, 4096> names{};
    static_cast<void>(llistxattr(path, block.data(), names.size()));
    static_cast<void>(listxattr(path, nullptr, 0));
    const ssize_t length = listxattr(path, names.data(), names.size());
    for (const char* name = names.data(); name < names.data() + length; name += std::strlen(name) + 1) {
        static_cast<void>(getxattr(path, name, nullptr, 0));
    }
    look(path);
    static_cast<void>(listxattr(path, names.data(), names.size()));
    for (const char* name = names.data(); name < names.data() + length; name += std::strlen(name) + 1) {
        static_cast<void>(getxattr(path, name, block.data(), 1024));
    }
}

/// Whether mounts have changed.
void askForMounts(int mounts) {
    pollfd request{mounts, POLLPRI, 0};
    static_cast<void>(poll(&request, 1, 0));
}

void makeAndResolveBookmark(const char* path, int mounts) {
    struct statfs volume{};
    askForMounts(mounts);
    lookAtSteps(path);
    look("/");
    static_cast<void>(statfs("/", &volume));
    look("/root/");
    lookAtSteps(path);
    askForMounts(mounts);
    look(path);
}

void report(const char* path, int mounts, Block& block) {
    look(path);
    look(path);
    readAttributes(path, block);
    look(path);
    makeAndResolveBookmark(path, mounts);
}

} // namespace

int main(int count, char** arguments) {
    std::ifstream list(count == 2 ? arguments[1] : "");
    const int mounts = open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC);
    Path folder{};
    if (!list || mounts < 0 || getcwd(folder.data(), folder.size()) == nullptr) {
        return EXIT_FAILURE;
    }
    constexpr int reportsInABlock = 34;
    const std::string above = std::string(folder.data()) + '/';
    std::string name;
    Block block{};
    for (int number = 1; std::getline(list, name, '\0'); ++number) {
        report((name.starts_with('/') ? name : above + name).c_str(), mounts, block);
        if (number % reportsInABlock == 0) {
            static_cast<void>(!write(STDOUT_FILENO, block.data(), block.size()));
        }
    }
    return EXIT_SUCCESS;
}
