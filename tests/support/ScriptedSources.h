#pragma once

#include "platform/services/Bookmarks.h"
#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/services/FileManager.h"
#include "platform/services/StatusFactSource.h"
#include "platform/services/TextFiles.h"
#include "platform/services/URLResources.h"
#include "platform/services/UserSession.h"

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

/// Services that return what a test sets and log their calls. They share one log, so that a test can check
/// the order across services.
namespace tolvane::tests {

using CallLog = std::vector<std::string>;

/// The bytes of a text, for attribute values.
platform::Data bytesOf(std::string_view text);

/// Notes its calls in a log that outlives it; several threads may ask at once.
class LoggingService {
public:
    explicit LoggingService(CallLog& log) : log_(log) {}

protected:
    void note(std::string call) const;
    CallLog& log() const { return log_; }

private:
    CallLog& log_;
};

class ScriptedURLResources final : public platform::URLResources, public LoggingService {
public:
    using LoggingService::LoggingService;

    platform::Dictionary values;
    /// If set, requests for this key fail with `failure`; an empty key makes all fail.
    std::optional<std::string> failingKey;
    platform::Error failure = platform::posixError(2);
    /// If set, there are no items whose paths contain it.
    std::optional<std::string> missing;

    platform::Result<platform::Dictionary> resourceValuesForKeys(
        const platform::URL& url, std::span<const std::string_view> keys) const override;
};

class ScriptedFileManager final : public platform::FileManager, public LoggingService {
public:
    using LoggingService::LoggingService;

    platform::Result<platform::Dictionary> answer = platform::Dictionary{};

    platform::Result<platform::Dictionary> attributesOfItemAtPath(std::string_view path) const override;
};

/// Extended attributes from a list; each call can be replaced.
class ScriptedExtendedAttributes final : public platform::ExtendedAttributeCalls, public LoggingService {
public:
    using LoggingService::LoggingService;

    std::vector<std::pair<std::string, std::string>> attributes;
    std::function<Answer(const char* path, std::span<char> buffer)> onList;
    std::function<Answer(const char* path, const char* name)> onSize;

    Answer listxattr(const char* path, std::span<char> buffer) const override;
    Answer getxattr(const char* path, const char* name, std::span<std::byte> buffer) const override;
};

class ScriptedBookmarks final : public platform::Bookmarks, public LoggingService {
public:
    using LoggingService::LoggingService;

    platform::Result<platform::Data> made = std::unexpected(platform::posixError(5));
    /// The bookmark in every file.
    platform::Result<platform::Data> stored = std::unexpected(platform::posixError(5));
    platform::Result<platform::ResolvedBookmark> resolved = std::unexpected(platform::posixError(5));
    mutable platform::Data resolvedFrom;

    /// Every bookmark leads to the item at this path.
    void resolveTo(std::string_view path, bool isStale = false) {
        resolved = platform::ResolvedBookmark{platform::URL::fileURLWithPath(path), isStale};
    }

    platform::Result<platform::Data> bookmarkData(const platform::URL& url) const override;
    platform::Result<platform::Data> bookmarkDataWithContentsOfURL(const platform::URL& url) const override;
    platform::Result<platform::ResolvedBookmark> URLByResolvingBookmarkData(
        std::span<const std::byte> data) const override;
};

/// Bookmark properties by key; without an answer the bytes are not a bookmark.
class ScriptedStoredProperties : public LoggingService {
public:
    using LoggingService::LoggingService;

    std::optional<platform::Dictionary> answer;
    std::optional<platform::Error> failure;
    platform::Data readFrom;

    /// Reads as the platform does. This object outlives what is returned.
    platform::StoredPropertiesReader reader();
};

/// The same facts of every item, whose owner is 1000 and which its owner may read.
class FixedStatusFacts final : public platform::StatusFactSource {
public:
    platform::Result<platform::StatusFacts> facts = [] {
        platform::StatusFacts some;
        some.mode = 0100400;
        some.ownerID = 1000;
        some.allocatedSize = 512;
        return some;
    }();

    platform::Result<platform::StatusFacts> factsOfItemAtPath(const std::string& /*path*/) const override {
        return facts;
    }
};

/// A session whose clock advances by one second per call.
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

/// Stores written texts instead of writing files.
class ScriptedTextFiles final : public platform::TextFiles {
public:
    mutable std::map<std::string, std::string> written;
    std::optional<platform::Error> failure;

    platform::Result<void> writeInPlace(std::string_view text, const platform::URL& url) const override;
};

} // namespace tolvane::tests
