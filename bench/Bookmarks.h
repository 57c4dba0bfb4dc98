/// Bookmarks for benchmarks: ordinary ones, and malicious ones of any length.
#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tolvane::bench {

/// A bookmark of an item on the start volume.
platform::Data bookmarkOfPath(std::vector<std::string> components);

/// One with so many folders above the item.
platform::Data withComponents(std::size_t count);

/// One with so many values under names of their own.
platform::Data withItems(std::size_t count);

/// One with the same text in every place of an array of this size, so that writing the values is longer than
/// reading them.
platform::Data withSharedValues(std::size_t count);

} // namespace tolvane::bench
