#include "platform/Base64.h"
#include "platform/FatalError.h"
#include "platform/Utf8.h"
#include "resolver/BookmarkAnalysis.h"
#include "resolver/BookmarkText.h"
#include "resolver/TRViewController.h"

#include <array>
#include <cstdint>
#include <utility>

/// Analysing and resolving what stands in the input box of the resolver window.
namespace tolvane::resolver {

namespace {

using platform::Dictionary;

constexpr const char* notAnalysed = "Couldn't analyse Bookmark.";
constexpr const char* notResolved = "Couldn't resolve Bookmark.";

std::optional<Dictionary> answerFor(
    std::string_view key,
    const platform::BookmarkProperties& properties,
    std::span<const std::byte> bookmark) {
    return properties.resourceValuesForKeys(std::array{key}, bookmark);
}

/// Resolves without options and without a base; nothing when no item is found. The stale flag is the
/// platform's to overwrite once the bookmark is resolved.
std::optional<platform::URL> resolvedURL(
    const platform::Bookmarks& bookmarks, std::span<const std::byte> bookmark, bool& bookmarkDataIsStale) {
    auto resolved = bookmarks.URLByResolvingBookmarkData(bookmark);
    if (!resolved) {
        return std::nullopt;
    }
    bookmarkDataIsStale = resolved->isStale;
    return std::move(resolved->url);
}

/// A number that the platform must have given as an unsigned one of at most 64 bits.
std::uint64_t forcedUInt64(const platform::Value& value, std::string_view key) {
    const std::optional<std::uint64_t> number = value.exactUInt64();
    if (!number) {
        platform::fatalError("attribute " + std::string(key) + " is of the wrong kind");
    }
    return *number;
}

/// The line below the path; empty where the item has no volume path.
std::string volumePathLine(const Dictionary& attributes) {
    const platform::Value* device = attributes.find(platform::NSFileSystemNumber);
    const platform::Value* inode = attributes.find(platform::NSFileSystemFileNumber);
    if (device == nullptr || inode == nullptr) {
        return {};
    }
    const std::uint64_t deviceNumber = forcedUInt64(*device, platform::NSFileSystemNumber);
    const std::uint64_t inodeNumber = forcedUInt64(*inode, platform::NSFileSystemFileNumber);
    if (deviceNumber == 0 || inodeNumber == 0) {
        return {};
    }
    return "\nvolfs path : /.vol/" + std::to_string(deviceNumber) + "/" + std::to_string(inodeNumber);
}

} // namespace

void TRViewController::analyseButton(platform::Sender /*sender*/) {
    const std::optional<platform::Data> bookmark = platform::base64DecodedData(cleanInput());
    if (!bookmark) {
        filePathTextbox->setStringValue(notAnalysed);
        return;
    }
    showAnalysis(*bookmark);
}

void TRViewController::resolveButton(platform::Sender /*sender*/) {
    const std::optional<platform::Data> bookmark = platform::base64DecodedData(cleanInput());
    if (!bookmark) {
        filePathTextbox->setStringValue(notResolved);
        return;
    }
    showAnalysis(*bookmark);

    // The check box has no say beyond what the flag holds at first: no fresh bookmark is made of a stale one.
    bool isStale = refreshDataCheckbox->state() != platform::ButtonState::off;
    auto found = resolvedURL(sources_.bookmarks, *bookmark, isStale);
    if (!found) {
        filePathTextbox->setStringValue(notResolved);
        return;
    }
    // Kept before anything else can fail, so that an item whose attributes are hidden can still be revealed.
    bmURL_ = std::move(found);
    const std::string path = bmURL_->path();
    const auto attributes = sources_.fileManager.attributesOfItemAtPath(path);
    if (!attributes) {
        filePathTextbox->setStringValue(notResolved);
        return;
    }
    filePathTextbox->setStringValue(platform::shownText(path) + volumePathLine(*attributes));
}

std::string TRViewController::cleanInput() {
    std::string text = cleanedBookmarkText(inputTextbox->string());
    setInput(text);
    return text;
}

void TRViewController::showAnalysis(std::span<const std::byte> bookmark) {
    const auto allProperties =
        answerFor(platform::NSURLBookmarkAllPropertiesKey, sources_.bookmarkProperties, bookmark);
    const auto detailedDescription =
        answerFor(platform::NSURLBookmarkDetailedDescription, sources_.bookmarkProperties, bookmark);
    showOutput(bookmarkAnalysis(allProperties, detailedDescription));
}

} // namespace tolvane::resolver
