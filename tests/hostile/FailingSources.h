// The services that the resolver window calls, each call counted, and those that a test chooses failing as if
// the item had just vanished.
#pragma once

#include "platform/services/Panels.h"
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

/// Bookmarks are read; each question for a property is a call that can fail.
platform::StoredPropertiesReader failingStoredProperties(
    platform::StoredPropertiesReader inner, CallCounter& counter);

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
