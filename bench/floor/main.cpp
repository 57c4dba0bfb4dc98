// Makes only the system calls of a report for each file, in its order: the lower limit for a program with
// these calls. The results are neither kept nor printed.
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
#include <sys/xattr.h>
#include <unistd.h>

namespace {

using Path = std::array<char, PATH_MAX>;

/// False where nothing is there.
bool look(const char* path) {
    struct statx status{};
    return statx(AT_FDCWD, path, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, STATX_ALL | STATX_MNT_ID, &status)
           == 0;
}

/// Each folder on the way to an absolute path, without "/".
void lookAtFolders(const char* path) {
    Path step{};
    for (std::size_t length = 1; path[length] != '\0'; ++length) {
        if (path[length] == '/') {
            std::memcpy(step.data(), path, length);
            step[length] = '\0';
            look(step.data());
        }
    }
}

void readAttributes(const char* path) {
    std::array<char, 4096> names{};
    std::array<char, 1024> value{};
    static_cast<void>(llistxattr(path, names.data(), names.size()));
    static_cast<void>(listxattr(path, nullptr, 0));
    const ssize_t length = listxattr(path, names.data(), names.size());
    for (const char* name = names.data(); name < names.data() + length; name += std::strlen(name) + 1) {
        static_cast<void>(getxattr(path, name, nullptr, 0));
    }
    look(path);
    static_cast<void>(listxattr(path, names.data(), names.size()));
    for (const char* name = names.data(); name < names.data() + length; name += std::strlen(name) + 1) {
        static_cast<void>(getxattr(path, name, value.data(), value.size()));
    }
}

/// Whether mounts have changed.
void askForMounts(int mounts) {
    pollfd request{mounts, POLLPRI, 0};
    static_cast<void>(poll(&request, 1, 0));
}

/// As for an item in the folder of the one before.
void makeAndResolveBookmark(const char* path, int mounts) {
    look(path);
    lookAtFolders(path);
    look(path);
    askForMounts(mounts);
    askForMounts(mounts);
    look(path);
}

bool report(const char* path, int mounts) {
    // Stands for the text.
    static constexpr std::array<char, 1900> text{};
    if (!look(path)) {
        return false;
    }
    readAttributes(path);
    makeAndResolveBookmark(path, mounts);
    return write(STDOUT_FILENO, text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

} // namespace

int main(int count, char** arguments) {
    std::ifstream list(count == 2 ? arguments[1] : "");
    const int mounts = open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC);
    Path folder{};
    if (!list || mounts < 0 || getcwd(folder.data(), folder.size()) == nullptr) {
        return EXIT_FAILURE;
    }
    const std::string above = std::string(folder.data()) + '/';
    for (std::string name; std::getline(list, name, '\0');) {
        if (!report((name.starts_with('/') ? name : above + name).c_str(), mounts)) {
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
