#include "platform/posix/PosixNewFiles.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>

namespace tolvane::platform {

Result<std::unique_ptr<NewFiles>> PosixNewFiles::open(const std::string& folder) {
    // With a slash after it a link would be followed.
    const std::string path = folder.substr(0, std::max<std::size_t>(folder.find_last_not_of('/') + 1, 1));
    auto opened = openFile(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    if (!opened) {
        return std::unexpected(opened.error());
    }
    return std::make_unique<PosixNewFiles>(*std::move(opened));
}

Result<void> PosixNewFiles::write(const std::string& name, std::span<const std::byte> bytes) {
    if (name.empty() || name.contains('/') || name.contains('\0')) {
        return std::unexpected(posixError(EINVAL));
    }
    constexpr mode_t readableAndWritable = 0666; // less what the user's mask takes away
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY;
    auto file = FileDescriptor::owned(openat(folder_.number(), name.c_str(), flags, readableAndWritable));
    if (file.number() < 0) {
        return std::unexpected(posixError(errno));
    }
    if (auto written = writeAll(file, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        !written) {
        return written;
    }
    return file.close();
}

} // namespace tolvane::platform
