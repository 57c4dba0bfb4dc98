#pragma once

#include "platform/BookmarkProperties.h"
#include "platform/Bookmarks.h"
#include "platform/ExtendedAttributeCalls.h"
#include "platform/FileManager.h"
#include "platform/TextFiles.h"
#include "platform/URLResources.h"
#include "platform/UserSession.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Platform backends that answer what a test tells them and note, in the order asked, what they were asked.
/// They share one log, so that the order across backends can be checked.
namespace tolvane::tests {

using CallLog = std::vector<std::string>;

/// Bytes of a text, for attribute values.
platform::Data bytesOf(std::string_view text);

class ScriptedURLResources final : public platform::URLResources {
public:
    explicit ScriptedURLResources(CallLog& log) : log_(log) {}

    platform::Dictionary values;
    /// When set, requests that ask for this key fail with `failure`; an empty key fails all.
    std::optional<std::string> failingKey;
    platform::Error failure = platform::posixError(2);

    platform::Result<platform::Dictionary> resourceValuesForKeys(
        const platform::URL& url, std::span<const std::string_view> keys) const override;

private:
    CallLog& log_;
};

class ScriptedFileManager final : public platform::FileManager {
public:
    explicit ScriptedFileManager(CallLog& log) : log_(log) {}

    platform::Result<platform::Dictionary> answer = platform::Dictionary{};

    platform::Result<platform::Dictionary> attributesOfItemAtPath(std::string_view path) const override;

private:
    CallLog& log_;
};

/// Extended attributes as a list; each call can be replaced.
class ScriptedExtendedAttributes final : public platform::ExtendedAttributeCalls {
public:
    explicit ScriptedExtendedAttributes(CallLog& log) : log_(log) {}

    std::vector<std::pair<std::string, std::string>> attributes;
    std::function<Answer(const char* path, std::span<char> buffer)> onList;
    std::function<Answer(const char* path, const char* name)> onSize;

    Answer listxattr(const char* path, std::span<char> buffer) const override;
    Answer getxattr(const char* path, const char* name, std::span<std::byte> buffer) const override;

private:
    CallLog& log_;
};

class ScriptedBookmarks final : public platform::Bookmarks {
public:
    explicit ScriptedBookmarks(CallLog& log) : log_(log) {}

    platform::Result<platform::Data> made = std::unexpected(platform::posixError(5));
    /// What every file holds.
    platform::Result<platform::Data> stored = std::unexpected(platform::posixError(5));
    platform::Result<platform::ResolvedBookmark> resolved = std::unexpected(platform::posixError(5));
    mutable platform::Data resolvedFrom;

    platform::Result<platform::Data> bookmarkData(const platform::URL& url) const override;
    platform::Result<platform::Data> bookmarkDataWithContentsOfURL(const platform::URL& url) const override;
    platform::Result<platform::ResolvedBookmark> URLByResolvingBookmarkData(
        std::span<const std::byte> data) const override;

private:
    CallLog& log_;
};

/// Bookmark properties by key; without an answer the bytes count as no bookmark.
class ScriptedBookmarkProperties final : public platform::BookmarkProperties {
public:
    explicit ScriptedBookmarkProperties(CallLog& log) : log_(log) {}

    std::optional<platform::Dictionary> answer;
    mutable platform::Data askedOf;

    std::optional<platform::Dictionary> resourceValuesForKeys(
        std::span<const std::string_view> keys, std::span<const std::byte> bookmarkData) const override;

private:
    CallLog& log_;
};

/// A session whose clock goes on by one second each time it is asked.
class ScriptedSession final : public platform::UserSession {
public:
    mutable double time = 0;
    std::string home = "/home/demo";

    platform::Date now() const override { return platform::Date(time++); }
    platform::URL homeDirectory() const override { return platform::URL::fileURLWithPath(home); }
    std::string describeForLocale(const platform::Date& date) const override {
        return "the moment " + date.description();
    }
};

/// Keeps what is written instead of writing it.
class ScriptedTextFiles final : public platform::TextFiles {
public:
    mutable std::map<std::string, std::string> written;
    std::optional<platform::Error> failure;

    platform::Result<void> writeInPlace(std::string_view text, const platform::URL& url) const override;
};

} // namespace tolvane::tests
