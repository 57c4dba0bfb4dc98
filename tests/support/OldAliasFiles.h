/// The contents of alias files from before bookmarks, made by hand.
#pragma once

#include "platform/values/Value.h"

#include <string_view>
#include <vector>

namespace tolvane::tests {

/// An alias record of 150 bytes.
platform::Data aliasBytes(unsigned version, unsigned kind, std::string_view volume);

struct Resource {
    unsigned number;
    platform::Data bytes;
};

/// A resource fork with one icon and these alias resources.
platform::Data forkWith(const std::vector<Resource>& resources);

/// The bytes as a string, as files and attributes are written here.
std::string_view textOf(const platform::Data& bytes);

} // namespace tolvane::tests
