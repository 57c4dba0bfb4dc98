// An open file as the system numbers it, and writing to it until all is written.
//
// A descriptor is either owned, and closed with the object, or borrowed, and left as it is: the standard
// streams belong to the process.
#pragma once

#include "platform/Error.h"

#include <chrono>
#include <optional>
#include <string_view>

namespace tolvane::platform {

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

    /// Closes an owned descriptor now, which is where some file systems tell that writing failed. A borrowed
    /// one is let go. The object stands for no open file afterwards.
    Result<void> close();

private:
    FileDescriptor(int number, bool owned) : number_(number), owned_(owned) {}

    int number_;
    bool owned_;
};

/// When waiting ends; without one it never does.
using Deadline = std::optional<std::chrono::steady_clock::time_point>;

/// Writes all bytes, in as many calls as it takes, waiting where a descriptor that does not block asks to
/// come back later, until the deadline, then fails with ETIMEDOUT; what was written by then stays written. A
/// pipe that nobody reads any more is an error value only where its signal is ignored
/// (`makeWriteFailuresErrors`).
Result<void> writeAll(const FileDescriptor& descriptor, std::string_view bytes, Deadline deadline = {});

/// Waits until a descriptor that does not block can be read or written (`events` as of poll). Fails with
/// ETIMEDOUT once the deadline has passed.
Result<void> waitUntilReady(const FileDescriptor& descriptor, short events, Deadline deadline = {});

} // namespace tolvane::platform
