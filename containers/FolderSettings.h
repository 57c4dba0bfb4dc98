#pragma once

#include "platform/values/Value.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The settings of folders that the Finder keeps in ".DS_Store": records of item names and four-letter codes
/// in a tree of blocks. All numbers are big-endian.
namespace tolvane::containers {

/// Why bytes are not such a file: the offset, and what was expected there, for people.
struct FolderSettingsFault {
    std::size_t offset = 0;
    std::string_view expected;

    friend bool operator==(const FolderSettingsFault&, const FolderSettingsFault&) = default;
};

/// One setting, in the bytes of its file.
struct FolderSetting {
    std::string name;                 ///< Of the item in the folder; "." is the folder itself.
    std::string code;                 ///< Four letters, such as "pBBk".
    std::string type;                 ///< "blob", "ustr", "bool", "long", "shor", "type", "comp" or "dutc".
    std::span<const std::byte> value; ///< Without the length of blobs and texts.
};

/// True if the bytes begin like such a file.
bool isLikeFolderSettings(std::span<const std::byte> bytes);

/// Parses a file: every record of its tree in order. Counts in headers are not trusted. Fails if a block or
/// record does not lie within the bytes, a type is unknown, a block is reached twice, or blocks have more
/// bytes together than the file: so time and memory are linear in its length.
std::expected<std::vector<FolderSetting>, FolderSettingsFault> readFolderSettings(
    std::span<const std::byte> bytes);

} // namespace tolvane::containers
