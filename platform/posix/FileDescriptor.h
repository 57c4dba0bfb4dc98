#pragma once

#include "platform/values/Error.h"

#include <functional>
#include <string>
#include <string_view>
#include <dirent.h>
#include <sys/types.h>

namespace tolvane::platform {

/// A file descriptor: owned, and closed with the object, or borrowed, such as the standard streams.
class FileDescriptor {
public:
    static FileDescriptor owned(int number) { return {number, true}; }
    static FileDescriptor borrowed(int number) { return {number, false}; }

    FileDescriptor(FileDescriptor&& other) noexcept;
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();

    int number() const { return number_; }

    /// Closes an owned descriptor now, since some file systems report failed writes then; releases a borrowed
    /// one.
    Result<void> close();

    /// Leaves closing to the caller.
    int release();

private:
    FileDescriptor(int number, bool owned) : number_(number), owned_(owned) {}

    int number_;
    bool owned_;
};

/// Opens the path, repeating interrupted calls. The descriptor is closed in started programs and never
/// becomes the controlling terminal. A path with a NUL fails with EINVAL.
Result<FileDescriptor> openFile(const std::string& path, int flags, mode_t mode = 0);

/// The same for reading, with the access date left as it is where the system permits that: only the owner and
/// the superuser may.
Result<FileDescriptor> openKeepingAccessDate(const std::string& path, int moreFlags);

/// Writes all bytes in as many calls as needed, waiting for non-blocking descriptors. A pipe without a reader
/// is an error only if its signal is ignored (`makeWriteFailuresErrors`).
Result<void> writeAll(const FileDescriptor& descriptor, std::string_view bytes);

/// Waits until a descriptor that does not block can be read or written (`events` as of poll).
Result<void> waitUntilReady(const FileDescriptor& descriptor, short events);

/// Receives an entry and the open folder, for relative calls; false ends the visit.
using FolderEntryVisitor = std::function<bool(const dirent& entry, int folder)>;

/// Visits the entries in the volume's order, without "." and "..". A symbolic link is not a folder, unless a
/// slash follows. The access date is kept where the system permits it.
Result<void> visitFolderEntries(const std::string& folder, const FolderEntryVisitor& visitor);

} // namespace tolvane::platform
