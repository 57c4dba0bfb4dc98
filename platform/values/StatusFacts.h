#pragma once

#include "platform/values/Date.h"

#include <cstdint>
#include <optional>

namespace tolvane::platform {

/// What may be done with an item now, by the system's own answer: with its access control list, the state of
/// its volume and the privileges of the one who asks. 0 where it may be done, else the error number.
struct ItemAccess {
    int read = 0;
    int write = 0;
    int execute = 0; ///< Of a folder: whether it may be entered.

    friend bool operator==(const ItemAccess&, const ItemAccess&) = default;
};

/// Facts about an item itself that the system has without opening it.
struct StatusFacts {
    std::uint32_t mode = 0; ///< Kind and permissions, as in st_mode.
    std::uint32_t ownerID = 0;
    std::uint32_t groupID = 0;
    std::uint64_t allocatedSize = 0;         ///< On the volume, in bytes.
    std::optional<Date> accessDate;          ///< Of the last reading, as far as the volume records it.
    std::optional<Date> statusChangeDate;    ///< Of contents, permissions, names or attributes.
    std::uint32_t flags = 0;                 ///< By the kernel's numbers of inode flags (`FS_*_FL`).
    std::uint32_t knownFlags = 0;            ///< Those whose state the system has.
    std::optional<ItemAccess> currentAccess; ///< Of the current user; symbolic links have none.
};

} // namespace tolvane::platform
