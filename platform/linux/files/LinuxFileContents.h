#pragma once

#include "platform/services/FileContents.h"

/// Reads files and folders without ever waiting for what is no file: everything is opened without blocking,
/// and looked at again before the first byte is read, since another item can have taken the path meanwhile.
/// The access date stays as it is where the system permits that.
namespace tolvane::platform {

class LinuxFileContents final : public FileContents {
public:
    FileAnswer<ItemLook> lookAtItem(const std::string& path) const override;
    FileAnswer<ItemLook> lookAtTarget(const std::string& path) const override;
    FileAnswer<std::string> destinationOfSymbolicLink(const std::string& path) const override;

    /// What is no regular file fails with EINVAL, a folder with EISDIR.
    FileAnswer<std::shared_ptr<const OpenedFile>> openForReading(const std::string& path) const override;

    FileAnswer<void> visitFolder(const std::string& path, const EntryVisitor& visitor) const override;
};

} // namespace tolvane::platform
