#pragma once

#include "platform/values/Error.h"

#include <string>
#include <string_view>
#include <sys/types.h>

namespace tolvane::platform {

/// An open file as the system numbers it.
///
/// A descriptor is either owned, and closed with the object, or borrowed, and left as it is: the standard
/// streams belong to the process.
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

    /// Closes an owned descriptor now, which is where some file systems report that writing failed. A
    /// borrowed one is let go. The object stands for no open file afterwards.
    Result<void> close();

    /// Leaves closing to the caller.
    int release();

private:
    FileDescriptor(int number, bool owned) : number_(number), owned_(owned) {}

    int number_;
    bool owned_;
};

/// Opens the path with these flags, and again after an interruption. It is closed in programs started later,
/// and never becomes the controlling terminal. A path with a NUL in it is refused with EINVAL.
Result<FileDescriptor> openFile(const std::string& path, int flags, mode_t mode = 0);

/// The same for reading, with the access date left as it is where the system permits that: only the owner and
/// the superuser may.
Result<FileDescriptor> openKeepingAccessDate(const std::string& path, int moreFlags);

/// Writes all bytes, in as many calls as it takes, waiting where a descriptor that does not block asks to
/// come back later. A pipe without a reader is an error value only where its signal is ignored
/// (`makeWriteFailuresErrors`).
Result<void> writeAll(const FileDescriptor& descriptor, std::string_view bytes);

/// Waits until a descriptor that does not block can be read or written (`events` as of poll).
Result<void> waitUntilReady(const FileDescriptor& descriptor, short events);

} // namespace tolvane::platform
