/// AppleDouble files and resource forks, written by code that has nothing in common with what reads them.
#pragma once

#include "platform/values/Value.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::tests {

/// Appends the low `width` bytes of a number, most significant first.
void appendBigEndianTo(platform::Data& out, std::uint64_t number, std::size_t width);

/// Appends ASCII as UTF-16, most significant byte first.
void appendWideTextTo(platform::Data& out, std::string_view ascii);

/// Bytes as text, in the same memory.
inline std::string_view textOfBytes(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

struct CompanionEntry {
    std::uint32_t identifier;
    platform::Data bytes = {};
};

inline constexpr std::uint32_t companionMagicNumber = 0x0005'1607;

/// A file with these parts, one after the other.
platform::Data companionFile(
    const std::vector<CompanionEntry>& entries,
    std::uint32_t version = 0x0002'0000,
    std::uint32_t magic = companionMagicNumber);

struct CompanionAttribute {
    std::string name;
    std::string value;
};

/// A file with Finder information, these attributes after it, and a resource fork, as programs that copy
/// files write it.
platform::Data companionFileWithAttributes(
    const std::vector<CompanionAttribute>& attributes, const platform::Data& resourceFork = {});

struct WrittenResource {
    std::string type; ///< Four characters.
    int number = 0;
    platform::Data bytes = {};
    std::optional<std::string> name = std::nullopt; ///< Mac Roman.
    unsigned attributes = 0;
};

/// A fork with these resources, by type in the order in which the types first occur.
platform::Data resourceForkOf(const std::vector<WrittenResource>& resources);

} // namespace tolvane::tests
