// The mounts as they are now, read anew only when they have changed.
//
// The kernel tells of changes through the descriptor that the list is read from, so asking again costs one
// system call that looks at nothing. The list itself is the only file that is opened.
#pragma once

#include "platform/Error.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/MountTable.h"

#include <memory>
#include <optional>
#include <string>

namespace tolvane::platform {

class CurrentMounts {
public:
    /// Another list is for tests.
    explicit CurrentMounts(std::string list = "/proc/self/mountinfo") : list_(std::move(list)) {}

    /// The table of this moment. As long as nothing has changed it is the same object each time, so what is
    /// known of mounts can be kept for as long as their table stays the same. Fails with the system's error.
    Result<std::shared_ptr<const MountTable>> table();

private:
    bool hasChanged() const;
    Result<std::string> readAll() const;

    std::string list_;
    std::optional<FileDescriptor> descriptor_;
    std::shared_ptr<const MountTable> table_;
};

} // namespace tolvane::platform
