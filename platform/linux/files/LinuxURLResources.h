#pragma once

#include "platform/linux/types/TypeTable.h"
#include "platform/services/URLResources.h"

namespace tolvane::platform {

/// Returns sizes, identity, dates and type of items, each only on request. A request costs one statx, and one
/// list of attributes for a total size or type of an item that can have a fork. No item is opened. Several
/// threads may use one object.
class LinuxURLResources final : public URLResources {
public:
    /// The table must outlive the object.
    explicit LinuxURLResources(const TypeTable& typeTable) : typeTable_(typeTable) {}

    /// A URL without a usable path fails with EINVAL. A resource fork that cannot be read counts as none.
    Result<Dictionary> resourceValuesForKeys(
        const URL& url, std::span<const std::string_view> keys) const override;

private:
    const TypeTable& typeTable_;
};

} // namespace tolvane::platform
