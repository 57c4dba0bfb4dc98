#pragma once

#include "platform/appledouble/ForkFault.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// Resource forks: small numbered pieces of data by type, big-endian throughout.
namespace tolvane::platform {

/// A type of resource as its four characters, such as 'alis', make a number.
constexpr std::uint32_t resourceType(const char (&letters)[5]) {
    std::uint32_t type = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        type = type << 8U | static_cast<unsigned char>(letters[i]);
    }
    return type;
}

/// One resource, in the bytes of its fork.
struct ForkResource {
    static constexpr std::uint8_t compressed = 0x01;

    std::uint32_t type = 0;
    std::int16_t number = 0;
    std::uint8_t attributes = 0;
    std::size_t offset = 0;           ///< Of the data, from the fork's first byte.
    std::span<const std::byte> bytes; ///< As stored, also where the attributes say that it is compressed.

    /// The name in Mac Roman, if the resource has one.
    std::optional<std::span<const std::byte>> name;

    /// The type's four characters; those past ASCII are Mac Roman.
    std::string typeText() const;

    /// The name as UTF-8; empty if the resource has none.
    std::string nameText() const;
};

/// A parsed fork. It refers to the bytes that were read, which must outlive it.
struct ResourceFork {
    std::uint16_t attributes = 0;
    std::vector<ForkResource> resources; ///< By type, in the fork's order.

    /// The resource of a type with the number, otherwise the first of this type, or null.
    const ForkResource* find(std::uint32_t type, std::int16_t number) const;
};

/// Parses a fork; one without bytes has no resources. Fails if the map, a list, a name or a resource does not
/// lie within its part, or if there are more references than the map has room for, as when types share them.
/// Time and memory are linear in the map's length.
std::expected<ResourceFork, ForkFault> readResourceFork(std::span<const std::byte> bytes);

} // namespace tolvane::platform
