#pragma once

#include "platform/linux/files/Accounts.h"
#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/services/FileManager.h"

/// Answers the attributes of items from one statx, the account databases, and the calls for extended
/// attributes.
///
/// The statx speaks of the item itself, the extended attributes are those of a link's target. The item is
/// never opened, so a FIFO, a device or a huge file costs the same as a small one. Names of accounts are
/// remembered for a few seconds (AccountNames); use it from one thread at a time.
namespace tolvane::platform {

class LinuxFileManager final : public FileManager {
public:
    /// The calls must outlive the file manager.
    explicit LinuxFileManager(
        const ExtendedAttributeCalls& extendedAttributeCalls, AccountNames accountNames = AccountNames());

    /// NSFileExtendedAttributes is complete or absent. It is absent when there are no attributes, when they
    /// cannot be listed, and when the value of one that is still there cannot be read. A name that is not
    /// UTF-8 stands there with U+FFFD for what cannot be read, and with further ones at its end where two
    /// names would look the same.
    Result<Dictionary> attributesOfItemAtPath(std::string_view path) const override;

private:
    const ExtendedAttributeCalls& extendedAttributeCalls_;
    mutable AccountNames accountNames_;
};

} // namespace tolvane::platform
