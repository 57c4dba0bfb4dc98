/// The contents of alias files from before bookmarks.
#pragma once

#include "tests/support/AliasRecords.h"
#include "tests/support/AppleDoubleFiles.h"

#include <string_view>
#include <vector>

namespace tolvane::tests {

/// An alias record without tags.
inline platform::Data aliasBytes(unsigned version, unsigned kind, std::string_view volume) {
    WrittenAlias alias;
    alias.version = version;
    alias.isFolder = kind == 1;
    alias.volume = volume;
    alias.hasEnd = false;
    return writtenAlias(alias);
}

struct Resource {
    unsigned number;
    platform::Data bytes;
};

/// A resource fork with one icon and these alias resources.
inline platform::Data forkWith(const std::vector<Resource>& resources) {
    std::vector<WrittenResource> all{{.type = "icns", .number = -16'455, .bytes = platform::Data(2)}};
    for (const auto& [number, bytes] : resources) {
        all.push_back({.type = "alis", .number = static_cast<int>(number), .bytes = bytes});
    }
    return resourceForkOf(all);
}

/// The bytes as a string, as files and attributes are written here.
inline std::string_view textOf(const platform::Data& bytes) {
    return textOfBytes(bytes);
}

} // namespace tolvane::tests
