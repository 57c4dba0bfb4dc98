#pragma once

#include "platform/Bookmarks.h"
#include "platform/FileManager.h"

#include <optional>
#include <string>
#include <utility>

namespace tolvane::cli {

/// Stands between the resolver window and the platform, hands everything on, and keeps what came back last.
///
/// The window says the same of every failure and nothing of how an item was found. A terminal user is told
/// both, without resolving a second time, which could give something else.
class ResolutionWitness final : public platform::Bookmarks, public platform::FileManager {
public:
    /// Both outlive this object.
    ResolutionWitness(const platform::Bookmarks& bookmarks, const platform::FileManager& fileManager)
        : bookmarks_(bookmarks)
        , fileManager_(fileManager) {}

    platform::Result<platform::Data> bookmarkData(const platform::URL& url) const override {
        return bookmarks_.bookmarkData(url);
    }
    platform::Result<platform::Data> bookmarkDataWithContentsOfURL(const platform::URL& url) const override {
        return bookmarks_.bookmarkDataWithContentsOfURL(url);
    }
    platform::Result<platform::ResolvedBookmark> URLByResolvingBookmarkData(
        std::span<const std::byte> data) const override {
        resolved_ = bookmarks_.URLByResolvingBookmarkData(data);
        attributesFailure_.reset();
        return *resolved_;
    }
    platform::Result<platform::Dictionary> attributesOfItemAtPath(std::string_view path) const override {
        auto attributes = fileManager_.attributesOfItemAtPath(path);
        attributesFailure_ = attributes ? std::nullopt : std::optional(attributes.error());
        return attributes;
    }

    /// What the last bookmark was resolved to; absent when none was tried.
    const std::optional<platform::Result<platform::ResolvedBookmark>>& resolved() const { return resolved_; }

    /// Why the attributes of its item could not be read; absent when they could.
    const std::optional<platform::Error>& attributesFailure() const { return attributesFailure_; }

private:
    const platform::Bookmarks& bookmarks_;
    const platform::FileManager& fileManager_;
    mutable std::optional<platform::Result<platform::ResolvedBookmark>> resolved_;
    mutable std::optional<platform::Error> attributesFailure_;
};

} // namespace tolvane::cli
