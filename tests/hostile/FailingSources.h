// The interfaces through which the logic reaches the platform, each call counted, and those that a test
// chooses failing as if what they ask about had just vanished.
#pragma once

#include "platform/Pasteboard.h"
#include "platform/SavePanel.h"
#include "tests/support/ScriptedPanels.h"
#include "tests/support/ScriptedSources.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::tests {

/// Numbers the calls from 1 on, in the order in which they come, across all sources.
class CallCounter {
public:
    /// Says which calls fail, by their number; at first none does.
    std::function<bool(std::size_t number)> fails = [](std::size_t) { return false; };

    /// Notes a call and answers whether it fails.
    bool next(std::string name) {
        names_.push_back(std::move(name));
        return fails(names_.size());
    }

    /// Begins to count anew.
    void restart() { names_.clear(); }

    /// What was called so far; the first has the number 1.
    const std::vector<std::string>& names() const { return names_; }

private:
    std::vector<std::string> names_;
};

/// How failures that have something to say say it.
platform::Error vanished();

class FailingURLResources final : public platform::URLResources {
public:
    FailingURLResources(const platform::URLResources& inner, CallCounter& counter)
        : inner_(inner)
        , counter_(counter) {}

    /// Whether values that the URL keeps are answered although the item is gone, as every system does.
    bool keepsValues = false;

    platform::Result<platform::Dictionary> resourceValuesForKeys(
        const platform::URL& url, std::span<const std::string_view> keys) const override;

private:
    const platform::URLResources& inner_;
    CallCounter& counter_;
};

class FailingExtendedAttributes final : public platform::ExtendedAttributeCalls {
public:
    FailingExtendedAttributes(const platform::ExtendedAttributeCalls& inner, CallCounter& counter)
        : inner_(inner)
        , counter_(counter) {}

    Answer listxattr(const char* path, std::span<char> buffer) const override;
    Answer getxattr(const char* path, const char* name, std::span<std::byte> buffer) const override;

private:
    const platform::ExtendedAttributeCalls& inner_;
    CallCounter& counter_;
};

class FailingFileManager final : public platform::FileManager {
public:
    FailingFileManager(const platform::FileManager& inner, CallCounter& counter)
        : inner_(inner)
        , counter_(counter) {}

    platform::Result<platform::Dictionary> attributesOfItemAtPath(std::string_view path) const override;

private:
    const platform::FileManager& inner_;
    CallCounter& counter_;
};

class FailingBookmarks final : public platform::Bookmarks {
public:
    FailingBookmarks(const platform::Bookmarks& inner, CallCounter& counter)
        : inner_(inner)
        , counter_(counter) {}

    platform::Result<platform::Data> bookmarkData(const platform::URL& url) const override;
    platform::Result<platform::Data> bookmarkDataWithContentsOfURL(const platform::URL& url) const override;
    platform::Result<platform::ResolvedBookmark> URLByResolvingBookmarkData(
        std::span<const std::byte> data) const override;

private:
    const platform::Bookmarks& inner_;
    CallCounter& counter_;
};

class FailingBookmarkProperties final : public platform::BookmarkProperties {
public:
    FailingBookmarkProperties(const platform::BookmarkProperties& inner, CallCounter& counter)
        : inner_(inner)
        , counter_(counter) {}

    std::optional<platform::Dictionary> resourceValuesForKeys(
        std::span<const std::string_view> keys, std::span<const std::byte> bookmarkData) const override;

private:
    const platform::BookmarkProperties& inner_;
    CallCounter& counter_;
};

/// A session has nothing to fail with; its calls are counted all the same.
class CountedSession final : public platform::UserSession {
public:
    CountedSession(const platform::UserSession& inner, CallCounter& counter)
        : inner_(inner)
        , counter_(counter) {}

    platform::Date now() const override;
    platform::URL homeDirectory() const override;
    std::string describeForLocale(const platform::Date& date) const override;

private:
    const platform::UserSession& inner_;
    CallCounter& counter_;
};

class FailingTextFiles final : public platform::TextFiles {
public:
    FailingTextFiles(const platform::TextFiles& inner, CallCounter& counter)
        : inner_(inner)
        , counter_(counter) {}

    platform::Result<void> writeInPlace(std::string_view text, const platform::URL& url) const override;

private:
    const platform::TextFiles& inner_;
    CallCounter& counter_;
};

/// A pasteboard that can be emptied always and written to sometimes.
class FailingPasteboard final : public platform::Pasteboard {
public:
    FailingPasteboard(platform::Pasteboard& inner, CallCounter& counter) : inner_(inner), counter_(counter) {}

    void clearContents() override;
    bool writeObjects(std::span<const std::string> texts) override;

private:
    platform::Pasteboard& inner_;
    CallCounter& counter_;
};

/// Scripts that cannot be made, or fail when they run.
class FailingAppleScripts final : public platform::AppleScripts {
public:
    FailingAppleScripts(platform::AppleScripts& inner, CallCounter& counter)
        : inner_(inner)
        , counter_(counter) {}

    std::unique_ptr<platform::AppleScript> initWithSource(std::string_view source) override;

private:
    platform::AppleScripts& inner_;
    CallCounter& counter_;
};

class FailingPreviewPanels final : public platform::PreviewPanels {
public:
    FailingPreviewPanels(platform::PreviewPanels& inner, CallCounter& counter)
        : inner_(inner)
        , counter_(counter) {}

    std::shared_ptr<platform::PreviewPanel> sharedPreviewPanel() override;

private:
    platform::PreviewPanels& inner_;
    CallCounter& counter_;
};

} // namespace tolvane::tests
