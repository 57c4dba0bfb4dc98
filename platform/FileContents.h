#pragma once

#include "platform/Date.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

/// What is in files and folders, for whoever shows it: the preview alone. All of it may be asked on any
/// thread, since a slow volume can keep an answer waiting; failures are therefore plain error codes.
namespace tolvane::platform {

enum class ItemKind {
    regularFile,
    folder,
    symbolicLink,
    fifo,
    socket,
    characterDevice,
    blockDevice,
    unknown,
};

/// What one look at an item tells without opening it.
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

/// A regular file that is open for reading. It may grow, shrink and change while it is.
class OpenedFile {
public:
    OpenedFile() = default;
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;
    virtual ~OpenedFile() = default;

    /// The size in bytes at this moment.
    virtual FileAnswer<std::uint64_t> size() const = 0;

    /// Fills the room from this offset on and answers how much was there; fewer bytes than room only at the
    /// file's end.
    virtual FileAnswer<std::size_t> read(std::uint64_t offset, std::span<std::byte> room) const = 0;
};

/// Paths are bytes, absolute, and hold no NUL; one that does is refused.
class FileContents {
public:
    FileContents() = default;
    FileContents(const FileContents&) = delete;
    FileContents& operator=(const FileContents&) = delete;
    virtual ~FileContents() = default;

    /// The item itself: a final symbolic link is not followed.
    virtual FileAnswer<ItemLook> lookAtItem(const std::string& path) const = 0;

    /// What the path leads to in the end.
    virtual FileAnswer<ItemLook> lookAtTarget(const std::string& path) const = 0;

    /// The bytes that a symbolic link holds.
    virtual FileAnswer<std::string> destinationOfSymbolicLink(const std::string& path) const = 0;

    /// Opens what the path leads to, if that is a regular file. Nothing else is ever waited for or read from.
    virtual FileAnswer<std::shared_ptr<const OpenedFile>> openForReading(const std::string& path) const = 0;

    /// Takes one entry of a folder; false ends the visit.
    using EntryVisitor = std::function<bool(std::string_view name, const ItemLook& item)>;

    /// Shows the entries in the order in which the volume gives them, without "." and "..". One that vanishes
    /// meanwhile is left out. A final symbolic link is followed only where a slash comes after it.
    virtual FileAnswer<void> visitFolder(const std::string& path, const EntryVisitor& visitor) const = 0;
};

} // namespace tolvane::platform
