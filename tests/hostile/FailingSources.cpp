#include "tests/hostile/FailingSources.h"

#include <algorithm>
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

Result<Dictionary> FailingURLResources::resourceValuesForKeys(
    const platform::URL& url, std::span<const std::string_view> keys) const {
    std::string name = "resourceValues";
    for (const std::string_view key : keys) {
        name.append(" ").append(key);
    }
    const bool areKept = std::ranges::all_of(
        keys, [&url](std::string_view key) { return url.keptResourceValue(key) != nullptr; });
    if (counter_.next(std::move(name)) && !(keepsValues && areKept)) {
        return std::unexpected(vanished());
    }
    return inner_.resourceValuesForKeys(url, keys);
}

platform::ExtendedAttributeCalls::Answer FailingExtendedAttributes::listxattr(
    const char* path, std::span<char> buffer) const {
    if (counter_.next(buffer.empty() ? "listxattr size" : "listxattr")) {
        return std::unexpected(ENOENT);
    }
    return inner_.listxattr(path, buffer);
}

platform::ExtendedAttributeCalls::Answer FailingExtendedAttributes::getxattr(
    const char* path, const char* name, std::span<std::byte> buffer) const {
    if (counter_.next(std::string("getxattr ") + name)) {
        return std::unexpected(ENOENT);
    }
    return inner_.getxattr(path, name, buffer);
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

std::optional<Dictionary> FailingBookmarkProperties::resourceValuesForKeys(
    std::span<const std::string_view> keys, std::span<const std::byte> bookmarkData) const {
    std::string name = "bookmarkProperties";
    for (const std::string_view key : keys) {
        name.append(" ").append(key);
    }
    if (counter_.next(std::move(name))) {
        return std::nullopt;
    }
    return inner_.resourceValuesForKeys(keys, bookmarkData);
}

platform::Date CountedSession::now() const {
    counter_.next("now");
    return inner_.now();
}

platform::URL CountedSession::homeDirectory() const {
    counter_.next("homeDirectory");
    return inner_.homeDirectory();
}

std::string CountedSession::describeForLocale(const platform::Date& date) const {
    counter_.next("describeForLocale");
    return inner_.describeForLocale(date);
}

Result<void> FailingTextFiles::writeInPlace(std::string_view text, const platform::URL& url) const {
    if (counter_.next("writeInPlace")) {
        return std::unexpected(vanished());
    }
    return inner_.writeInPlace(text, url);
}

void FailingPasteboard::clearContents() {
    counter_.next("clearContents");
    inner_.clearContents();
}

bool FailingPasteboard::writeObjects(std::span<const std::string> texts) {
    return !counter_.next("writeObjects") && inner_.writeObjects(texts);
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
