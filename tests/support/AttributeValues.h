/// Values of extended attributes, written by code that has nothing in common with what explains them. Bytes
/// are strings.
#pragma once

#include "tests/support/PropertyListWriters.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::tests {

/// So many bytes of a number, the least significant one first; PropertyListWriters.h has the other order.
std::string littleEndian(std::uint64_t number, std::size_t width);

/// So many bytes of zero.
inline std::string zeros(std::size_t count) {
    return std::string(count, '\0');
}

/// Numbers one after the other, in so many bytes each, in either order.
template <std::size_t Width>
std::string little(auto... numbers) {
    return (littleEndian(static_cast<std::uint64_t>(numbers), Width) + ...);
}
template <std::size_t Width>
std::string big(auto... numbers) {
    return (bigEndian(static_cast<std::uint64_t>(numbers), Width) + ...);
}

/// The bytes of hexadecimal digits; blanks are left out.
std::string bytesOfHex(std::string_view digits);

/// A text in UTF-16, least significant byte first, without a mark; ASCII only.
std::string utf16(std::string_view text);

struct PosixAclEntry {
    unsigned tag;
    unsigned permissions;
    std::uint32_t account = 0xFFFFFFFF;
};
std::string posixAcl(const std::vector<PosixAclEntry>& entries);

/// A file's capabilities; the numbers of those that are permitted and inheritable.
std::string fileCapabilities(
    const std::vector<unsigned>& permitted,
    const std::vector<unsigned>& inheritable,
    bool effective,
    unsigned revision = 2,
    std::uint32_t root = 0);

struct Nfs4AclEntry {
    std::uint32_t type;
    std::uint32_t flags;
    std::uint32_t mask;
    std::string who;
};
std::string nfs4Acl(const std::vector<Nfs4AclEntry>& entries);

/// A security identifier: "1-5-18" is {5, {18}}.
struct WindowsAccount {
    std::uint64_t authority;
    std::vector<std::uint32_t> parts;
};
struct WindowsEntry {
    unsigned type;
    unsigned flags;
    std::uint32_t mask;
    WindowsAccount who;
};
/// A descriptor whose offsets count from `base` bytes before it.
std::string securityDescriptor(
    const WindowsAccount& owner,
    const WindowsAccount& group,
    const std::vector<WindowsEntry>& access,
    std::size_t base = 0);

/// Ticks of Windows for seconds since 1970.
std::uint64_t windowsTicks(std::int64_t seconds, std::uint32_t hundredNanoseconds = 0);

/// Reparse data of a symbolic link.
std::string symbolicLinkReparse(std::string_view target, std::string_view printed, bool relative);

/// 32 bytes of Finder information: two codes of four characters, flags, place (down, across).
std::string finderInfoOfFile(
    std::string_view type, std::string_view creator, unsigned flags, int down = 0, int across = 0);

/// A zlib stream of stored blocks.
std::string zlibStored(std::string_view content);

} // namespace tolvane::tests
