// Bookmarks for benchmarks to read: ordinary ones, and ones of any length that nobody would make but to do
// harm.
#pragma once

#include "platform/Value.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tolvane::bench {

/// Of an item on the start volume.
platform::Data bookmarkOfPath(std::vector<std::string> components);

/// With so many folders above the item.
platform::Data withComponents(std::size_t count);

/// With so many values that callers stored under names of their own.
platform::Data withItems(std::size_t count);

/// With one text in every place of an array of so many. Whatever writes the values out writes more than was
/// read.
platform::Data withSharedValues(std::size_t count);

} // namespace tolvane::bench
