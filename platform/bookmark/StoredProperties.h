#pragma once

#include "platform/BookmarkProperties.h"

namespace tolvane::platform {

/// Answers by reading the bookmark itself, in whichever container it is. A key that is not one of the two of
/// BookmarkProperties.h names one entry among all properties. Each question reads anew and takes time linear
/// in the number of bytes, and besides what sorting the properties by their names takes.
class StoredProperties final : public BookmarkProperties {
public:
    std::optional<Dictionary> resourceValuesForKeys(
        std::span<const std::string_view> keys, std::span<const std::byte> bookmarkData) const override;
};

} // namespace tolvane::platform
