#include "platform/posix/CurrentDirectory.h"

#include <cerrno>
#include <climits>
#include <unistd.h>

namespace tolvane::platform {

Result<std::string> currentDirectory() {
    std::string path(PATH_MAX, '\0');
    while (getcwd(path.data(), path.size()) == nullptr) {
        if (errno != ERANGE) {
            return std::unexpected(posixError(errno));
        }
        path.resize(path.size() * 2);
    }
    path.resize(path.find('\0'));
    return path;
}

} // namespace tolvane::platform
