#include "platform/linux/LinuxBookmarks.h"

#include "platform/linux/StoredBookmark.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tolvane::platform {

namespace {

constexpr std::int64_t fileReadUnknownError = 256;
constexpr std::int64_t fileReadCorruptFileError = 259;

Error cocoaError(std::int64_t code, std::string_view sentence) {
    return {std::string(NSCocoaErrorDomain), code, {{std::string(NSLocalizedDescriptionKey), sentence}}};
}

} // namespace

Result<Data> LinuxBookmarks::bookmarkData(const URL& /*url*/) const {
    return std::unexpected(cocoaError(fileReadUnknownError, "Bookmarks cannot be made on this system yet."));
}

Result<Data> LinuxBookmarks::bookmarkDataWithContentsOfURL(const URL& url) const {
    return storedBookmark(url);
}

Result<ResolvedBookmark> LinuxBookmarks::URLByResolvingBookmarkData(
    std::span<const std::byte> /*data*/) const {
    return std::unexpected(
        cocoaError(fileReadCorruptFileError, "Bookmarks cannot be resolved on this system yet."));
}

} // namespace tolvane::platform
