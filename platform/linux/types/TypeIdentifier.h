#pragma once

#include "platform/linux/types/TypeTable.h"
#include "platform/values/ItemKind.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

/// The uniform type identifier of an item, from what the file system keeps about it.
///
/// The answer follows from the item's kind, name and Finder information alone: contents are never looked at
/// and a symbolic link is never followed, so that two items with the same facts always have the same
/// identifier.
namespace tolvane::platform {

struct ItemFacts {
    ItemKind kind = ItemKind::regularFile;
    bool isVolumeRoot = false;               ///< counts for directories only
    bool isExecutable = false;               ///< any of the three execute bits is set
    std::string_view name{};                 ///< last component of the path, raw bytes, need not be UTF-8
    std::span<const std::byte> finderInfo{}; ///< the attribute's value; ignored unless it has 32 bytes
};

/// What follows the last dot of the name, as it stands. Empty when the name has no dot, ends in one, or has
/// its only dot in front.
std::string_view extensionOfName(std::string_view name);

/// Always an identifier, never an empty text. A table without declarations leaves the rules that need none:
/// then every extension of a regular file is one that is not declared.
std::string typeIdentifier(const ItemFacts& item, const TypeTable& table);

} // namespace tolvane::platform
