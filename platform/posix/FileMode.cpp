#include "platform/posix/FileMode.h"

#include <sys/stat.h>

namespace tolvane::platform {

ItemKind kindOfMode(std::uint32_t mode) {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return ItemKind::regularFile;
    case S_IFDIR:
        return ItemKind::folder;
    case S_IFLNK:
        return ItemKind::symbolicLink;
    case S_IFIFO:
        return ItemKind::fifo;
    case S_IFSOCK:
        return ItemKind::socket;
    case S_IFCHR:
        return ItemKind::characterDevice;
    case S_IFBLK:
        return ItemKind::blockDevice;
    default:
        return ItemKind::unknown;
    }
}

} // namespace tolvane::platform
