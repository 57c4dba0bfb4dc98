#pragma once

#include "platform/linux/types/TypeTable.h"
#include "platform/services/URLResources.h"

namespace tolvane::platform {

/// Returns resource values of items: sizes, identity, dates and type, each only when it was asked for.
///
/// A request costs one statx, and one look at the list of attributes when a size of all forks or a type is
/// wanted of an item that can have one. The item is never opened.
class LinuxURLResources final : public URLResources {
public:
    /// The table must outlive the object.
    explicit LinuxURLResources(const TypeTable& typeTable) : typeTable_(typeTable) {}

    /// A URL that names nothing a system call could look at fails with EINVAL. A resource fork that
    /// cannot be listed or measured counts as none.
    Result<Dictionary> resourceValuesForKeys(
        const URL& url, std::span<const std::string_view> keys) const override;

private:
    const TypeTable& typeTable_;
};

} // namespace tolvane::platform
