#include "platform/bookmark/format/BookmarkRefusal.h"

#include "platform/values/Utf8.h"

namespace tolvane::platform {

namespace {

constexpr std::uint32_t scopeOptions = bookmark_option::withSecurityScope
                                       | bookmark_option::readOnlySecurityScope
                                       | bookmark_option::madeByScopeAgent;

/// Far more than any path, and far less than what offsets of 32 bits can reach.
constexpr std::size_t mostComponents = 1U << 20U;
constexpr std::size_t mostTextBytes = 1U << 28U;

using Texts = std::vector<const std::string*>;

void gather(Texts& texts, const std::optional<std::string>& text) {
    if (text) {
        texts.push_back(&*text);
    }
}

void gather(Texts& texts, const BookmarkVolume& volume) {
    for (const auto* text : {&volume.path, &volume.url, &volume.name, &volume.uuid, &volume.mountURL}) {
        gather(texts, *text);
    }
}

std::vector<const BookmarkVolume*> volumesOf(const BookmarkContents& contents) {
    std::vector<const BookmarkVolume*> volumes{&contents.volume};
    if (contents.rootVolume) {
        volumes.push_back(&*contents.rootVolume);
    }
    for (const BookmarkVolume& volume : contents.volumesBetween) {
        volumes.push_back(&volume);
    }
    return volumes;
}

Texts textsOf(const BookmarkContents& contents) {
    Texts texts;
    if (contents.pathComponents) {
        for (const std::string& component : *contents.pathComponents) {
            texts.push_back(&component);
        }
    }
    for (const auto* text : {&contents.url, &contents.fileName, &contents.userName, &contents.displayName}) {
        gather(texts, *text);
    }
    for (const BookmarkVolume* const volume : volumesOf(contents)) {
        gather(texts, *volume);
    }
    return texts;
}

bool namesAnItem(const std::string& component) {
    return !component.empty() && component != "." && component.find('/') == std::string::npos
           && component.find('\0') == std::string::npos;
}

bool isURLOrAbsent(const std::optional<std::string>& text) {
    return !text || URL::fromText(*text);
}

std::optional<BookmarkRefusal> refusalOfTexts(const BookmarkContents& contents) {
    std::size_t textBytes = 0;
    for (const std::string* const text : textsOf(contents)) {
        if (text->size() > mostTextBytes - textBytes) {
            return BookmarkRefusal{"the texts are too long for a bookmark"};
        }
        textBytes += text->size();
        if (!isValidUtf8(*text)) {
            return BookmarkRefusal{"a text is not UTF-8"};
        }
    }
    if (!isURLOrAbsent(contents.url)) {
        return BookmarkRefusal{"the URL of the target is not a URL"};
    }
    for (const BookmarkVolume* const volume : volumesOf(contents)) {
        if (!isURLOrAbsent(volume->url) || !isURLOrAbsent(volume->mountURL)) {
            return BookmarkRefusal{"the URL of a volume is not a URL"};
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<BookmarkRefusal> refusalOfContents(const BookmarkContents& contents) {
    const std::size_t count = contents.pathComponents ? contents.pathComponents->size() : 0;
    if (count > mostComponents) {
        return BookmarkRefusal{"the path has too many components for a bookmark"};
    }
    if (const std::optional<BookmarkRefusal> refusal = refusalOfTexts(contents)) {
        return refusal;
    }
    if (contents.pathComponents && !std::ranges::all_of(*contents.pathComponents, namesAnItem)) {
        return BookmarkRefusal{"a component of the path names no item"};
    }
    if (contents.fileIDs && contents.fileIDs->size() != count) {
        return BookmarkRefusal{"there is not one file number for each component of the path"};
    }
    if (!contents.volumeDepths.empty() && contents.volumeDepths.size() != count + 1) {
        return BookmarkRefusal{"there is not one volume depth for each component of the path and one more"};
    }
    if (contents.rootVolume.has_value() == contents.volumeDepths.empty()) {
        return BookmarkRefusal{"the root volume and the volume depths are not given together"};
    }
    if (!contents.rootVolume && !contents.volumesBetween.empty()) {
        return BookmarkRefusal{
            "there are volumes between the root volume and the target's, but no root volume"};
    }
    if (contents.volumesBetween.size() > contents.volumeDepths.size()) {
        return BookmarkRefusal{"there are more volumes than components of the path"};
    }
    if ((contents.options & scopeOptions) != 0) {
        return BookmarkRefusal{"the options claim a security scope"};
    }
    return std::nullopt;
}

} // namespace tolvane::platform
