#include "tests/hostile/FailingSources.h"

#include <cerrno>
#include <optional>

namespace tolvane::tests {

using platform::Data;
using platform::Dictionary;
using platform::Result;

namespace {

class FailingAppleScript final : public platform::AppleScript {
public:
    FailingAppleScript(std::unique_ptr<platform::AppleScript> inner, CallCounter& counter)
        : inner_(std::move(inner))
        , counter_(counter) {}

    Result<void> executeAndReturnError() override {
        if (counter_.next("execute")) {
            return std::unexpected(vanished());
        }
        return inner_->executeAndReturnError();
    }

private:
    std::unique_ptr<platform::AppleScript> inner_;
    CallCounter& counter_;
};

} // namespace

platform::Error vanished() {
    return platform::posixError(ENOENT);
}

Result<Dictionary> FailingFileManager::attributesOfItemAtPath(std::string_view path) const {
    if (counter_.next("attributesOfItemAtPath")) {
        return std::unexpected(vanished());
    }
    return inner_.attributesOfItemAtPath(path);
}

Result<Data> FailingBookmarks::bookmarkData(const platform::URL& url) const {
    if (counter_.next("bookmarkData")) {
        return std::unexpected(vanished());
    }
    return inner_.bookmarkData(url);
}

Result<Data> FailingBookmarks::bookmarkDataWithContentsOfURL(const platform::URL& url) const {
    if (counter_.next("bookmarkDataWithContentsOfURL")) {
        return std::unexpected(vanished());
    }
    return inner_.bookmarkDataWithContentsOfURL(url);
}

Result<platform::ResolvedBookmark> FailingBookmarks::URLByResolvingBookmarkData(
    std::span<const std::byte> data) const {
    if (counter_.next("URLByResolvingBookmarkData")) {
        return std::unexpected(vanished());
    }
    return inner_.URLByResolvingBookmarkData(data);
}

platform::StoredPropertiesReader failingStoredProperties(
    platform::StoredPropertiesReader inner, CallCounter& counter) {
    return [inner = std::move(inner), &counter](std::span<const std::byte> bookmark) {
        return [properties = inner(bookmark), &counter](std::string_view key) -> std::optional<Dictionary> {
            return counter.next("bookmarkProperties " + std::string(key)) ? std::nullopt : properties(key);
        };
    };
}

std::unique_ptr<platform::AppleScript> FailingAppleScripts::initWithSource(std::string_view source) {
    if (counter_.next("initWithSource")) {
        return nullptr;
    }
    auto script = inner_.initWithSource(source);
    return script ? std::make_unique<FailingAppleScript>(std::move(script), counter_) : nullptr;
}

std::shared_ptr<platform::PreviewPanel> FailingPreviewPanels::sharedPreviewPanel() {
    return counter_.next("sharedPreviewPanel") ? nullptr : inner_.sharedPreviewPanel();
}

} // namespace tolvane::tests
