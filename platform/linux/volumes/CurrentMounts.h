/// The current mounts, reread only after a change.
///
/// The kernel signals changes through the list's descriptor, so asking again costs one system call. The list
/// is the only file that is opened. Several threads may use one object.
#pragma once

#include "platform/linux/volumes/MountTable.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/values/Error.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace tolvane::platform {

class CurrentMounts {
public:
    /// Another list is for tests.
    explicit CurrentMounts(std::string list = "/proc/self/mountinfo") : list_(std::move(list)) {}

    /// The current table. It stays the same object until something changes, so facts about mounts can be
    /// cached per table. Fails with the system's error.
    Result<std::shared_ptr<const MountTable>> table();

private:
    bool hasChanged() const;
    Result<std::string> readAll() const;

    std::string list_;
    std::mutex mutex_; // a change is signalled once, so asking and reading belong together
    std::optional<FileDescriptor> descriptor_;
    std::shared_ptr<const MountTable> table_;
};

} // namespace tolvane::platform
