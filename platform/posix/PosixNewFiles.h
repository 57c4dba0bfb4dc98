#pragma once

#include "platform/posix/FileDescriptor.h"
#include "platform/services/NewFiles.h"

#include <memory>
#include <string>

namespace tolvane::platform {

/// Makes files in a folder that stays the same one even if another takes its path.
class PosixNewFiles final : public NewFiles {
public:
    /// Opens the folder; a path to a symbolic link fails.
    static Result<std::unique_ptr<NewFiles>> open(const std::string& folder);

    explicit PosixNewFiles(FileDescriptor folder) : folder_(std::move(folder)) {}

    Result<void> write(const std::string& name, std::span<const std::byte> bytes) override;

private:
    FileDescriptor folder_;
};

} // namespace tolvane::platform
