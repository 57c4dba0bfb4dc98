#include "platform/linux/files/FolderEntries.h"

#include "platform/linux/files/FileDescriptor.h"

#include <cerrno>
#include <memory>
#include <string_view>
#include <fcntl.h>

namespace tolvane::platform {

namespace {

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

} // namespace

Result<void> visitFolderEntries(const std::string& folder, const FolderEntryVisitor& visitor) {
    auto descriptor = openKeepingAccessDate(folder, O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK);
    if (!descriptor) {
        return std::unexpected(descriptor.error());
    }
    const std::unique_ptr<DIR, FolderCloser> stream(fdopendir(descriptor->number()));
    if (stream == nullptr) {
        return std::unexpected(posixError(errno));
    }
    const int number = descriptor->release(); // the stream closes it
    while (true) {
        errno = 0;
        const dirent* const entry = readdir(stream.get());
        if (entry == nullptr) {
            return errno == 0 ? Result<void>() : std::unexpected(posixError(errno));
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != ".." && !visitor(*entry, number)) {
            return {};
        }
    }
}

} // namespace tolvane::platform
