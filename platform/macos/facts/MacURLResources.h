#pragma once

#include "platform/services/URLResources.h"

namespace tolvane::platform {

/// Returns what the system itself says of an item, type identifier included. Each request makes a URL object
/// of its own, since these objects keep what they once returned. Several threads may use one object.
class MacURLResources final : public URLResources {
public:
    /// A URL without a usable path fails with EINVAL. Keys that are not in URLResources.h have no value.
    Result<Dictionary> resourceValuesForKeys(
        const URL& url, std::span<const std::string_view> keys) const override;
};

} // namespace tolvane::platform
