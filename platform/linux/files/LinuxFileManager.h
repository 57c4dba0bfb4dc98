#pragma once

#include "platform/posix/Accounts.h"
#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/services/FileManager.h"

/// Returns the attributes of items from one statx, the account databases, and the extended attributes. The
/// statx is of the item itself, extended attributes are those of a link's target. No item is opened. Account
/// names are cached (AccountNames). Several threads may use one object.
namespace tolvane::platform {

class LinuxFileManager final : public FileManager {
public:
    /// The calls must outlive the file manager.
    explicit LinuxFileManager(
        const ExtendedAttributeCalls& extendedAttributeCalls, AccountNames accountNames = AccountNames());

    /// NSFileExtendedAttributes is complete or absent: there are none, listing fails, or a value that still
    /// exists cannot be read. Names that are not UTF-8 get U+FFFD for the invalid parts, and more at the end
    /// where two names would be the same.
    Result<Dictionary> attributesOfItemAtPath(std::string_view path) const override;

private:
    const ExtendedAttributeCalls& extendedAttributeCalls_;
    mutable AccountNames accountNames_;
};

} // namespace tolvane::platform
