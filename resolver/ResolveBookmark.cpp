#include "resolver/ResolveBookmark.h"

#include "platform/values/FatalError.h"
#include "platform/values/Utf8.h"
#include "platform/values/VolumePath.h"

namespace tolvane::resolver {

namespace {

using platform::Dictionary;

/// A number that the platform must have given as an unsigned one of at most 64 bits.
std::uint64_t forcedUInt64(const platform::Value& value, std::string_view key) {
    const std::optional<std::uint64_t> number = value.exactUInt64();
    if (!number) {
        platform::fatalError("attribute " + std::string(key) + " is of the wrong kind");
    }
    return *number;
}

std::optional<std::string> volumePathIn(const Dictionary& attributes) {
    const platform::Value* device = attributes.find(platform::NSFileSystemNumber);
    const platform::Value* inode = attributes.find(platform::NSFileSystemFileNumber);
    if (device == nullptr || inode == nullptr) {
        return std::nullopt;
    }
    const std::uint64_t deviceNumber = forcedUInt64(*device, platform::NSFileSystemNumber);
    const std::uint64_t inodeNumber = forcedUInt64(*inode, platform::NSFileSystemFileNumber);
    if (deviceNumber == 0 || inodeNumber == 0) {
        return std::nullopt;
    }
    return platform::volumePath(deviceNumber, inodeNumber);
}

} // namespace

BookmarkResolution resolveBookmark(
    std::span<const std::byte> bookmark,
    bool bookmarkDataIsStale,
    const platform::Bookmarks& bookmarks,
    const platform::FileManager& fileManager) {
    BookmarkResolution resolution{
        .resolved = bookmarks.URLByResolvingBookmarkData(bookmark),
        .bookmarkDataIsStale = bookmarkDataIsStale};
    if (!resolution.resolved) {
        return resolution;
    }
    resolution.bookmarkDataIsStale = resolution.resolved->isStale;
    if (!resolution.resolved->url) {
        return resolution;
    }
    std::string path = resolution.resolved->url->path();
    const auto attributes = fileManager.attributesOfItemAtPath(path);
    if (!attributes) {
        resolution.attributesFailure = attributes.error();
        return resolution;
    }
    resolution.volumePath = volumePathIn(*attributes);
    resolution.filePath = filePathText(platform::shownText(path), resolution.volumePath);
    return resolution;
}

std::string filePathText(std::string shownPath, const std::optional<std::string>& volumePath) {
    return volumePath ? std::move(shownPath) + "\nvolfs path : " + *volumePath : std::move(shownPath);
}

std::string revealScript(std::string_view path) {
    std::string script = "set thePath to POSIX file \"";
    script += path;
    script += "\"\ntell application \"Finder\" to reveal thePath";
    return script;
}

} // namespace tolvane::resolver
