#pragma once

#include "platform/services/FileContents.h"

/// Reads files and folders without waiting for other items: everything is opened without blocking and checked
/// again before reading, since another item can have taken the path. Access dates are kept where permitted.
namespace tolvane::platform {

class PosixFileContents final : public FileContents {
public:
    FileAnswer<ItemLook> lookAtItem(const std::string& path) const override;
    FileAnswer<ItemLook> lookAtTarget(const std::string& path) const override;
    FileAnswer<std::string> destinationOfSymbolicLink(const std::string& path) const override;

    /// What is no regular file fails with EINVAL, a folder with EISDIR.
    FileAnswer<std::shared_ptr<const OpenedFile>> openForReading(const std::string& path) const override;

    FileAnswer<void> visitFolder(const std::string& path, const EntryVisitor& visitor) const override;
};

} // namespace tolvane::platform
