#pragma once

#include "platform/values/Error.h"

#include <cstddef>
#include <span>
#include <string>

namespace tolvane::platform {

/// A folder in which files are made. Nothing that is there already is ever changed.
class NewFiles {
public:
    NewFiles() = default;
    NewFiles(const NewFiles&) = delete;
    NewFiles& operator=(const NewFiles&) = delete;
    virtual ~NewFiles() = default;

    /// Makes a file with these bytes. Fails with the system's error if there is an item of that name, also a
    /// symbolic link that leads nowhere, and with EINVAL if the name is none or has a slash or a NUL. After
    /// another failure an incomplete file can be left.
    virtual Result<void> write(const std::string& name, std::span<const std::byte> bytes) = 0;
};

} // namespace tolvane::platform
