#include "tests/support/ScriptedSources.h"

#include <algorithm>
#include <cerrno>
#include <mutex>

namespace tolvane::tests {

using platform::Data;
using platform::Dictionary;
using platform::Result;

Data bytesOf(std::string_view text) {
    Data bytes(text.size());
    std::ranges::transform(text, bytes.begin(), [](char c) { return static_cast<std::byte>(c); });
    return bytes;
}

void LoggingService::note(std::string call) const {
    static std::mutex mutex;
    const std::scoped_lock lock(mutex);
    log_.push_back(std::move(call));
}

Result<Dictionary> ScriptedURLResources::resourceValuesForKeys(
    const platform::URL& url, std::span<const std::string_view> keys) const {
    if (missing && url.path().contains(*missing)) {
        return std::unexpected(platform::posixError(ENOENT));
    }
    std::string call = "resourceValues";
    for (const std::string_view key : keys) {
        call.append(" ").append(key);
    }
    note(call);

    const bool fails =
        failingKey && (failingKey->empty() || std::ranges::find(keys, *failingKey) != keys.end());
    if (fails) {
        return std::unexpected(failure);
    }
    Dictionary answer;
    for (const std::string_view key : keys) {
        const platform::Value* kept = url.keptResourceValue(key);
        if (const platform::Value* value = kept != nullptr ? kept : values.find(key)) {
            answer.set(key, *value);
        }
    }
    return answer;
}

Result<Dictionary> ScriptedFileManager::attributesOfItemAtPath(std::string_view path) const {
    note("attributesOfItemAtPath " + std::string(path));
    return answer;
}

platform::ExtendedAttributeCalls::Answer ScriptedExtendedAttributes::listxattr(
    const char* path, std::span<char> buffer) const {
    note("listxattr " + std::string(path == nullptr ? "(null)" : path) + " " + std::to_string(buffer.size()));
    if (onList) {
        return onList(path, buffer);
    }
    std::string list;
    for (const auto& [name, value] : attributes) {
        list.append(name).push_back('\0');
    }
    if (buffer.empty()) {
        return static_cast<std::int64_t>(list.size());
    }
    if (buffer.size() < list.size()) {
        return std::unexpected(ERANGE);
    }
    std::ranges::copy(list, buffer.begin());
    return static_cast<std::int64_t>(list.size());
}

platform::ExtendedAttributeCalls::Answer ScriptedExtendedAttributes::getxattr(
    const char* path, const char* name, std::span<std::byte> buffer) const {
    note("getxattr " + std::string(name) + " " + std::to_string(buffer.size()));
    if (onSize) {
        return onSize(path, name);
    }
    const auto attribute = std::ranges::find(attributes, name, &std::pair<std::string, std::string>::first);
    if (attribute == attributes.end()) {
        return std::unexpected(ENODATA);
    }
    if (!buffer.empty()) {
        std::ranges::copy(bytesOf(attribute->second), buffer.begin());
    }
    return static_cast<std::int64_t>(attribute->second.size());
}

Result<Data> ScriptedBookmarks::bookmarkData(const platform::URL& url) const {
    note("bookmarkData " + url.path());
    return made;
}

Result<Data> ScriptedBookmarks::bookmarkDataWithContentsOfURL(const platform::URL& url) const {
    note("bookmarkDataWithContents " + url.path());
    return stored;
}

Result<platform::ResolvedBookmark> ScriptedBookmarks::URLByResolvingBookmarkData(
    std::span<const std::byte> data) const {
    note("resolve");
    resolvedFrom.assign(data.begin(), data.end());
    return resolved;
}

platform::StoredPropertiesReader ScriptedStoredProperties::reader() {
    return [this](std::span<const std::byte> bookmark) {
        readFrom.assign(bookmark.begin(), bookmark.end());
        const auto properties = [this](std::string_view key) -> std::optional<Dictionary> {
            note("bookmarkProperties " + std::string(key));
            if (!answer) {
                return std::nullopt;
            }
            const platform::Value* const value = answer->find(key);
            return value == nullptr ? Dictionary() : Dictionary{{std::string(key), *value}};
        };
        return platform::ReadProperties{properties, failure};
    };
}

Result<void> ScriptedTextFiles::writeInPlace(std::string_view text, const platform::URL& url) const {
    if (failure) {
        return std::unexpected(*failure);
    }
    written[url.path()] = text;
    return {};
}

} // namespace tolvane::tests
