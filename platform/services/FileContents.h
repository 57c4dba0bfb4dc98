#pragma once

#include "platform/values/Date.h"
#include "platform/values/ItemKind.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

/// Reads files and folders, for the preview only. All functions may be called on any thread, since a slow
/// volume can block; failures are therefore plain error codes.
namespace tolvane::platform {

/// What the system returns about an item without opening it.
struct ItemLook {
    ItemKind kind = ItemKind::unknown;
    std::uint64_t size = 0;
    std::uint32_t permissions = 0; ///< The twelve bits 07777.
    Date modificationDate{0};
    std::uint64_t volume = 0; ///< Equal for items on the same volume.
    std::uint64_t fileNumber = 0;

    friend bool operator==(const ItemLook&, const ItemLook&) = default;
};

template <typename T>
using FileAnswer = std::expected<T, std::error_code>;

/// A regular file open for reading. It may grow, shrink and change meanwhile.
class OpenedFile {
public:
    OpenedFile() = default;
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;
    virtual ~OpenedFile() = default;

    /// The current size in bytes.
    virtual FileAnswer<std::uint64_t> size() const = 0;

    /// Fills the buffer from this offset and returns the number of bytes; fewer than its size only at the end
    /// of the file.
    virtual FileAnswer<std::size_t> read(std::uint64_t offset, std::span<std::byte> room) const = 0;
};

/// Paths are absolute bytes; one that contains a NUL is refused.
class FileContents {
public:
    FileContents() = default;
    FileContents(const FileContents&) = delete;
    FileContents& operator=(const FileContents&) = delete;
    virtual ~FileContents() = default;

    /// The item itself: a final symbolic link is not followed.
    virtual FileAnswer<ItemLook> lookAtItem(const std::string& path) const = 0;

    /// The item after following symbolic links.
    virtual FileAnswer<ItemLook> lookAtTarget(const std::string& path) const = 0;

    /// The target of a symbolic link, as bytes.
    virtual FileAnswer<std::string> destinationOfSymbolicLink(const std::string& path) const = 0;

    /// Opens the path if it refers to a regular file. Nothing else is opened or waited for.
    virtual FileAnswer<std::shared_ptr<const OpenedFile>> openForReading(const std::string& path) const = 0;

    /// Receives one entry of a folder; returning false ends the listing.
    using EntryVisitor = std::function<bool(std::string_view name, const ItemLook& item)>;

    /// Lists the entries in the volume's order, without "." and "..". Entries that vanish meanwhile are left
    /// out. A final symbolic link is followed only if a slash comes after it.
    virtual FileAnswer<void> visitFolder(const std::string& path, const EntryVisitor& visitor) const = 0;
};

} // namespace tolvane::platform
