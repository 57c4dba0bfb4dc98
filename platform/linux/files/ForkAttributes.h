#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

/// The extended attributes for a Mac's resource fork and Finder information. They come from network volumes
/// and archives, under names that depend on the writer.
///
/// Always those of the item itself, not of a link's target.
namespace tolvane::platform {

/// The names under which an item has them; null where it has none. Where it has several, the first known one
/// counts.
struct ForkAttributes {
    const char* resourceFork = nullptr;
    const char* finderInfo = nullptr;
};

/// Which of them the item has, by one look at its list of attributes (two where that is very long). An item
/// whose list cannot be read has none.
ForkAttributes forkAttributesOfItem(const std::string& path);

/// The size of the attribute's value; nothing when it cannot be read.
std::optional<std::int64_t> attributeSize(const std::string& path, const char* name);

using FinderInfo = std::array<std::byte, 32>;

/// The attribute's value; nothing when it cannot be read or is of another size.
std::optional<FinderInfo> readFinderInfo(const std::string& path, const char* name);

} // namespace tolvane::platform
