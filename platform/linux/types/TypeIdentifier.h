#pragma once

#include "platform/linux/types/TypeTable.h"
#include "platform/values/ItemKind.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

/// The uniform type identifier of an item, from its kind, name and Finder information only: contents are not
/// read and symbolic links not followed, so equal facts give equal identifiers.
namespace tolvane::platform {

struct ItemFacts {
    ItemKind kind = ItemKind::regularFile;
    bool isVolumeRoot = false;               ///< counts for directories only
    bool isExecutable = false;               ///< any of the three execute bits is set
    std::string_view name{};                 ///< last component of the path, raw bytes, need not be UTF-8
    std::span<const std::byte> finderInfo{}; ///< the attribute's value; ignored unless it has 32 bytes
};

/// The text after the last dot. Empty if there is no dot, or the only one is first or last.
std::string_view extensionOfName(std::string_view name);

/// Never empty. With a table without declarations, every extension of a regular file is undeclared.
std::string typeIdentifier(const ItemFacts& item, const TypeTable& table);

} // namespace tolvane::platform
