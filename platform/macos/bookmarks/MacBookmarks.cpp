#include "platform/macos/bookmarks/MacBookmarks.h"

#include "platform/macos/values/Conversions.h"

#include <array>
#include <cerrno>
#include <string>

namespace tolvane::platform {

namespace {

using macos::Owned;

constexpr CFOptionFlags withoutOptions = 0;

Result<Data> answerOf(const Owned<CFDataRef>& data, const Owned<CFErrorRef>& error) {
    if (!data) {
        return std::unexpected(macos::errorOf(error));
    }
    return macos::bytesOf(data.get());
}

std::optional<Dictionary> propertiesOf(const Data& bookmarkData, std::string_view key) {
    const Owned<CFStringRef> name(
        CFStringCreateWithCString(nullptr, std::string(key).c_str(), kCFStringEncodingUTF8));
    const Owned<CFDataRef> data = macos::dataOf(bookmarkData);
    if (!name || !data) {
        return std::nullopt;
    }
    std::array<const void*, 1> names{name.get()};
    const Owned<CFArrayRef> keys(CFArrayCreate(nullptr, names.data(), names.size(), &kCFTypeArrayCallBacks));
    if (!keys) {
        return std::nullopt;
    }
    const Owned<CFDictionaryRef> properties(
        CFURLCreateResourcePropertiesForKeysFromBookmarkData(nullptr, keys.get(), data.get()));
    return properties ? std::optional(macos::dictionaryOf(properties.get())) : std::nullopt;
}

} // namespace

Result<Data> MacBookmarks::bookmarkData(const URL& url) const {
    const Owned<CFURLRef> item = macos::fileURLOf(url);
    if (!item) {
        return std::unexpected(posixError(EINVAL));
    }
    Owned<CFErrorRef> error;
    const Owned<CFDataRef> data(
        CFURLCreateBookmarkData(nullptr, item.get(), withoutOptions, nullptr, nullptr, error.out()));
    return answerOf(data, error);
}

Result<Data> MacBookmarks::bookmarkDataWithContentsOfURL(const URL& url) const {
    const Owned<CFURLRef> file = macos::fileURLOf(url);
    if (!file) {
        return std::unexpected(posixError(EINVAL));
    }
    Owned<CFErrorRef> error;
    const Owned<CFDataRef> data(CFURLCreateBookmarkDataFromFile(nullptr, file.get(), error.out()));
    return answerOf(data, error);
}

Result<ResolvedBookmark> MacBookmarks::URLByResolvingBookmarkData(std::span<const std::byte> data) const {
    const Owned<CFDataRef> bookmark = macos::dataOf(data);
    if (!bookmark) {
        return std::unexpected(posixError(ENOMEM));
    }
    Boolean isStale = 0;
    Owned<CFErrorRef> error;
    const Owned<CFURLRef> item(CFURLCreateByResolvingBookmarkData(
        nullptr, bookmark.get(), withoutOptions, nullptr, nullptr, &isStale, error.out()));
    if (!item) {
        return std::unexpected(macos::errorOf(error));
    }
    ResolvedBookmark resolved{macos::urlOf(item.get()), isStale != 0};
    resolved.match.volume = VolumeMatch::unknown;
    resolved.match.item = ItemMatch::unknown;
    return resolved;
}

ReadProperties readSystemProperties(std::span<const std::byte> bookmarkData) {
    const auto properties = [data = Data(bookmarkData.begin(), bookmarkData.end())](std::string_view key) {
        return propertiesOf(data, key);
    };
    if (properties(NSURLBookmarkAllPropertiesKey)) {
        return {properties};
    }
    return {
        properties, cocoaError(NSFileReadCorruptFileError, "The system reads no bookmark in these bytes.")};
}

} // namespace tolvane::platform
