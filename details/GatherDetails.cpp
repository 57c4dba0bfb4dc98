#include "details/GatherDetails.h"

#include "inspect/FileReferenceURL.h"
#include "platform/values/Base64.h"
#include "platform/values/Description.h"
#include "platform/values/FatalError.h"
#include "platform/values/Utf8.h"
#include "platform/values/VolumePath.h"

#include <charconv>

namespace tolvane::details {

namespace {

using platform::Dictionary;

/// The value of a forced conversion; a value of another kind is a fault of the platform below.
template <typename T>
T forced(std::optional<T> converted, std::string_view key) {
    if (!converted) {
        platform::fatalError("attribute " + std::string(key) + " is of the wrong kind");
    }
    return *std::move(converted);
}

template <typename Kind>
const Kind& forcedKind(const Dictionary::Entry& entry) {
    const auto* value = entry.value.as<Kind>();
    if (value == nullptr) {
        platform::fatalError("attribute " + entry.key + " is of the wrong kind");
    }
    return *value;
}

std::string unsignedIntText(const Dictionary::Entry& entry) {
    return std::to_string(forced(entry.value.unsignedIntValue(), entry.key));
}

/// The number as "%o" formats it: its low 32 bits in octal digits.
std::string octalText(std::int64_t number) {
    std::array<char, 12> digits{};
    const auto bits = static_cast<std::uint32_t>(number);
    const auto [end, fault] = std::to_chars(digits.data(), digits.data() + digits.size(), bits, 8);
    return {digits.data(), end};
}

void gatherSizes(const inspect::SizeData& sizes, DetailsTexts& texts) {
    const std::int64_t urlMetadata =
        platform::checkedSubtract(sizes.uTotalSize(), sizes.uDataSize(), "the URL metadata size");
    const std::int64_t fileSystemTotal =
        platform::checkedAdd(sizes.fmDataSize(), sizes.uXattrSize(), "the file system's total size");

    texts.pathTextbox = platform::shownText(sizes.url().path());
    texts.urlTotalSize = std::to_string(sizes.uTotalSize());
    texts.urlDataSize = std::to_string(sizes.uDataSize());
    texts.urlXattrSize = std::to_string(urlMetadata);
    texts.xattrSize = std::to_string(sizes.uXattrSize());
    texts.filemanSize = std::to_string(sizes.fmDataSize());
    texts.filemanTotalSize = std::to_string(fileSystemTotal);
}

std::optional<std::string> typeIdentifierOf(
    const platform::URL& url, const platform::URLResources& resources) {
    static constexpr std::array<std::string_view, 1> keys{platform::NSURLTypeIdentifierKey};
    auto values = resources.resourceValuesForKeys(url, keys);
    return values ? platform::URLResourceValues(*std::move(values)).typeIdentifier() : std::nullopt;
}

void gatherAttributes(
    const inspect::SizeData& sizes, const platform::URLResources& resources, GatheredDetails& details) {
    DetailsTexts& texts = details.texts;
    std::uint64_t fileSystemNumber = 0;
    std::uint64_t fileNumber = 0;
    for (const Dictionary::Entry& entry : sizes.inode()) {
        const std::string& key = entry.key;
        if (key == platform::NSFilePosixPermissions) {
            texts.permsTextbox = octalText(forced(entry.value.integerValue(), key));
        } else if (key == platform::NSFileSystemNumber) {
            fileSystemNumber = forced(entry.value.exactUInt64(), key);
        } else if (key == platform::NSFileSystemFileNumber) {
            fileNumber = forced(entry.value.exactUInt64(), key);
        } else if (key == platform::NSFileOwnerAccountName) {
            texts.ownerNameTextbox = forcedKind<std::string>(entry);
        } else if (key == platform::NSFileOwnerAccountID) {
            texts.ownerIDTextbox = unsignedIntText(entry);
        } else if (key == platform::NSFileGroupOwnerAccountName) {
            texts.groupNameTextbox = forcedKind<std::string>(entry);
        } else if (key == platform::NSFileGroupOwnerAccountID) {
            texts.groupIDTextbox = unsignedIntText(entry);
        } else if (key == platform::NSFileCreationDate) {
            texts.createdTextbox = forcedKind<platform::Date>(entry).description();
        } else if (key == platform::NSFileModificationDate) {
            texts.modifiedTextbox = forcedKind<platform::Date>(entry).description();
        } else if (key == platform::NSFileType) {
            const auto& fileType = forcedKind<std::string>(entry);
            details.typeIdentifier = typeIdentifierOf(sizes.url(), resources);
            texts.typeTextbox = fileType + ": " + details.typeIdentifier.value_or("N/A");
        } else if (key == platform::NSFileReferenceCount) {
            texts.refCountTextbox = unsignedIntText(entry);
        } else if (key == platform::NSFileExtendedAttributes) {
            texts.inodeText = key + " : " + platform::description(entry.value) + "\n";
        }
    }
    if (fileSystemNumber != 0 && fileNumber != 0) {
        texts.volfsPathTextbox = platform::volumePath(fileSystemNumber, fileNumber);
    }
}

void gatherBookmark(
    const platform::URL& url, const platform::Bookmarks& bookmarks, GatheredDetails& details) {
    static constexpr std::string_view noBookmark = "(couldn't get bookmark)";
    std::string& shownPath = details.texts.bookmarkPathTextbox.emplace(noBookmark);
    auto made = bookmarks.resolvedBookmarkData(url);
    if (!made) {
        return;
    }
    details.texts.bookmarkTextbox = platform::base64EncodedString(made->data);
    details.bookmark = std::move(made->data);
    if (!made->resolved) {
        return;
    }
    details.bookmarkURL = std::move(made->resolved->url);
    shownPath = details.bookmarkURL ? platform::shownText(details.bookmarkURL->path()) : "(couldn't resolve)";
}

} // namespace

GatheredDetails gatherDetails(const inspect::SizeData& sizes, const GatheringSources& sources) {
    GatheredDetails details{{}, {}, {}, {}, platform::Date(0)};
    gatherSizes(sizes, details.texts);
    gatherAttributes(sizes, sources.resources, details);
    details.texts.frURLTextbox = inspect::getFileReferenceURL(sizes.url(), sources.resources);
    if (!details.texts.frURLTextbox) {
        platform::fatalError("the inspected file has no file reference URL");
    }
    gatherBookmark(sizes.url(), sources.bookmarks, details);
    details.gathered = sources.session.now();
    return details;
}

} // namespace tolvane::details
