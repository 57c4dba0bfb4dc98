/// Alias records, written by code that has nothing in common with what reads them.
#pragma once

#include "platform/values/Value.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::tests {

/// What a record is to contain. Times are seconds since 1904.
struct WrittenAlias {
    unsigned version = 2;
    bool isFolder = false;
    std::string volume = "Disk"; ///< Mac Roman; version 3 has it as a tag only.
    std::string name = "note.txt";
    std::uint32_t volumeTime = 3'000'000'000;
    std::uint32_t time = 3'600'000'000;
    std::uint32_t parentNumber = 20;
    std::uint32_t number = 30;
    std::vector<std::pair<unsigned, std::string>> tags;
    bool hasEnd = true;
};

platform::Data writtenAlias(const WrittenAlias& alias);

/// Of ASCII: its length and UTF-16, as tags 14 and 15 have it.
std::string unicodeTag(std::string_view ascii);

/// Seconds since 1904 as eight bytes, as tags 16 and 17 have them.
std::string dateTag(std::uint32_t seconds);

/// An alias to "/Volumes/Disk/folder/note.txt" with the tags that a Mac writes.
WrittenAlias noteAlias(unsigned version = 2);

/// The same of a volume in the disk image /Users/demo/Disk.dmg.
WrittenAlias noteAliasInDiskImage(unsigned version = 2);

} // namespace tolvane::tests
