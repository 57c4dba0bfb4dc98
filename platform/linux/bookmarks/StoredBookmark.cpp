#include "platform/linux/bookmarks/StoredBookmark.h"

#include "platform/appledouble/ResourceFork.h"
#include "platform/bookmark/format/AliasBookmark.h"
#include "platform/bookmark/format/BookmarkHeader.h"
#include "platform/bookmark/format/BookmarkReader.h"
#include "platform/bookmark/format/BookmarkWriter.h"
#include "platform/linux/files/ForkAttributes.h"
#include "platform/linux/files/ItemStatus.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixFileContents.h"
#include "platform/values/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <span>
#include <fcntl.h>
#include <linux/limits.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace tolvane::platform {

namespace {

std::unexpected<Error> failure(std::int64_t code, std::string_view sentence) {
    return std::unexpected(cocoaError(code, sentence));
}

std::unexpected<Error> failureOf(const Error& error) {
    switch (error.code) {
    case ENOENT:
    case ENOTDIR:
        return failure(NSFileReadNoSuchFileError, "The file was not found.");
    case EACCES:
    case EPERM:
        return failure(NSFileReadNoPermissionError, "Permission to read the file was denied.");
    default:
        return failure(
            NSFileReadUnknownError, "The file cannot be read: " + error.localizedDescription() + ".");
    }
}

/// Names where it leads, since it is not followed.
std::string refusalOfLink(const std::string& path) {
    const auto target = PosixFileContents().destinationOfSymbolicLink(path);
    return "A symbolic link holds no bookmark data"
           + (target ? "; it leads to “" + shownText(*target) + "” and is not followed." : ".");
}

/// Why an item of this kind holds no bookmark; empty for a regular file.
std::string refusalOfKind(std::uint32_t mode, const std::string& path) {
    switch (kindOfMode(mode)) {
    case ItemKind::regularFile:
        return {};
    case ItemKind::folder:
        return "A folder holds no bookmark data.";
    case ItemKind::symbolicLink:
        return refusalOfLink(path);
    case ItemKind::fifo:
        return "A FIFO holds no bookmark data.";
    case ItemKind::socket:
        return "A socket holds no bookmark data.";
    default:
        return "A device holds no bookmark data.";
    }
}

/// Reads until there are as many bytes as wanted or the file ends. Memory grows with what was read.
Result<void> readUpTo(const FileDescriptor& file, Data& bytes, std::uint64_t wanted) {
    constexpr std::uint64_t mostAtOnce = 65'536;
    while (bytes.size() < wanted) {
        const std::size_t had = bytes.size();
        bytes.resize(had + static_cast<std::size_t>(std::min(wanted - had, mostAtOnce)));
        const auto length = read(file.number(), bytes.data() + had, bytes.size() - had);
        const int reason = errno;
        bytes.resize(had + static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
        if (length == 0) {
            break;
        }
        if (length < 0 && reason != EINTR) {
            return std::unexpected(posixError(reason));
        }
    }
    return {};
}

/// The alias record that the file has from before there were bookmarks, as bookmark data.
std::optional<Data> bookmarkOfOldAlias(const FileDescriptor& file, const std::string& path) {
    const char* const name = forkAttributesOfItem(path).resourceFork;
    if (name == nullptr) {
        return std::nullopt;
    }
    Data fork(XATTR_SIZE_MAX);
    const auto length = fgetxattr(file.number(), name, fork.data(), fork.size());
    if (length < 0) {
        return std::nullopt;
    }
    fork.resize(static_cast<std::size_t>(length));
    const auto resources = readResourceFork(fork);
    const ForkResource* const record = resources ? resources->find(resourceType("alis"), 0) : nullptr;
    if (record == nullptr || !beginsLikeAliasRecord(record->bytes)) {
        return std::nullopt;
    }
    return bookmarkOfAliasRecord(record->bytes);
}

/// The alias record that is all that the file has, as bookmark data. `bytes` are those at its front.
Result<std::optional<Data>> bookmarkOfAloneAlias(const FileDescriptor& file, Data& bytes) {
    const auto length = statedAliasLength(bytes);
    if (!length) {
        return std::nullopt;
    }
    // One more tells whether the file ends there.
    if (const auto read = readUpTo(file, bytes, *length + std::uint64_t{1}); !read) {
        return std::unexpected(read.error());
    }
    return isLikeAliasRecord(bytes) ? std::optional(bookmarkOfAliasRecord(bytes)) : std::nullopt;
}

Result<Data> bareForm(std::span<const std::byte> bytes) {
    const auto structure = readBookmark(bytes);
    if (!structure) {
        return failure(NSFileReadCorruptFileError, structure.error().sentence());
    }
    return bareBookmarkBytes(*structure);
}

Result<Data> bookmarkIn(const FileDescriptor& file, const std::string& path) {
    Data bytes;
    if (const auto read = readUpTo(file, bytes, bookmarkFrontLength); !read) {
        return failureOf(read.error());
    }
    const auto claimed = claimedBookmarkLength(bytes);
    if (!claimed) {
        if (auto bookmark = bookmarkOfOldAlias(file, path)) {
            return *std::move(bookmark);
        }
        auto alone = bookmarkOfAloneAlias(file, bytes);
        if (!alone) {
            return failureOf(alone.error());
        }
        if (*alone) {
            return **std::move(alone);
        }
        return failure(NSFileReadCorruptFileError, "The file holds no bookmark data.");
    }
    if (*claimed > longestStoredBookmark) {
        return failure(
            NSFileReadCorruptFileError, "The file claims to hold " + std::to_string(*claimed)
                                            + " bytes of bookmark data; more than "
                                            + std::to_string(longestStoredBookmark) + " are not read.");
    }
    if (const auto read = readUpTo(file, bytes, *claimed); !read) {
        return failureOf(read.error());
    }
    return bareForm(bytes);
}

} // namespace

Result<Data> storedBookmark(const URL& url) {
    const auto path = url.fileSystemRepresentation();
    if (!path) {
        return failure(NSFileReadUnknownError, "The URL does not name a file.");
    }
    const auto status = statusOfItem(*path);
    if (!status) {
        return failureOf(status.error());
    }
    if (const std::string refusal = refusalOfKind(status->mode, *path); !refusal.empty()) {
        return failure(NSFileReadCorruptFileError, refusal);
    }
    const auto file = openKeepingAccessDate(*path, O_NOFOLLOW | O_NONBLOCK);
    if (!file) {
        return failureOf(file.error());
    }
    // Another item can have taken the path meanwhile.
    struct stat found{};
    if (fstat(file->number(), &found) != 0) {
        return failureOf(posixError(errno));
    }
    if (const std::string refusal = refusalOfKind(found.st_mode, *path); !refusal.empty()) {
        return failure(NSFileReadCorruptFileError, refusal);
    }
    return bookmarkIn(*file, *path);
}

} // namespace tolvane::platform
