#include "details/ViewController.h"
#include "inspect/Document.h"
#include "inspect/FileReferenceURL.h"
#include "platform/Base64.h"
#include "platform/CheckedArithmetic.h"
#include "platform/Description.h"
#include "platform/FatalError.h"
#include "platform/FileManager.h"
#include "platform/Utf8.h"
#include "platform/WindowController.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

/// The pass that fills the fields of the details window.
namespace tolvane::details {

namespace {

using platform::Dictionary;
using platform::Value;

/// The value that a forced conversion gave; a value of another kind is a fault of the platform below.
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

/// What "%o" makes of the number: its low 32 bits in octal digits.
std::string octalText(std::int64_t number) {
    std::array<char, 12> digits{};
    const auto bits = static_cast<std::uint32_t>(number);
    const auto [end, fault] = std::to_chars(digits.data(), digits.data() + digits.size(), bits, 8);
    return {digits.data(), end};
}

/// The document of the window's controller. Null where the chain breaks off; a document of another class is
/// fatal.
std::shared_ptr<inspect::Document> documentOf(const platform::Window* window) {
    const auto controller = window != nullptr ? window->windowController() : nullptr;
    const auto document = controller ? controller->document() : nullptr;
    if (!document) {
        return nullptr;
    }
    auto inspected = std::dynamic_pointer_cast<inspect::Document>(document);
    if (!inspected) {
        platform::fatalError("the details window's document is of the wrong class");
    }
    return inspected;
}

} // namespace

void ViewController::gatherDetails() {
    platform::Window* window = view().window();
    if (window != nullptr) {
        window->setDelegate(self());
    }
    saveString_.clear();

    const std::shared_ptr<inspect::Document> document = documentOf(window);
    if (!document || document->theSizes().empty()) {
        return;
    }
    const std::shared_ptr<const inspect::SizeData> sizes = document->theSizes().front();

    showSizes(*sizes);
    showAttributes(*sizes);
    auto reference = inspect::getFileReferenceURL(sizes->url(), sources_.resources);
    if (!reference) {
        platform::fatalError("the inspected file has no file reference URL");
    }
    frURLTextbox->setStringValue(*std::move(reference));
    showBookmark(sizes->url());
    theDate_ = sources_.session.now();
}

void ViewController::showSizes(const inspect::SizeData& sizes) {
    const std::int64_t urlMetadata =
        platform::checkedSubtract(sizes.uTotalSize(), sizes.uDataSize(), "the URL metadata size");
    const std::int64_t fileSystemTotal =
        platform::checkedAdd(sizes.fmDataSize(), sizes.uXattrSize(), "the file system's total size");

    pathTextbox->setStringValue(platform::shownText(sizes.url().path()));
    urlTotalSize->setStringValue(std::to_string(sizes.uTotalSize()));
    urlDataSize->setStringValue(std::to_string(sizes.uDataSize()));
    urlXattrSize->setStringValue(std::to_string(urlMetadata));
    xattrSize->setStringValue(std::to_string(sizes.uXattrSize()));
    filemanSize->setStringValue(std::to_string(sizes.fmDataSize()));
    filemanTotalSize->setStringValue(std::to_string(fileSystemTotal));
}

void ViewController::showAttributes(const inspect::SizeData& sizes) {
    std::uint64_t fileSystemNumber = 0;
    std::uint64_t fileNumber = 0;
    for (const Dictionary::Entry& entry : sizes.inode()) {
        const std::string& key = entry.key;
        const Value& value = entry.value;
        if (key == platform::NSFilePosixPermissions) {
            permsTextbox->setStringValue(octalText(forced(value.integerValue(), key)));
        } else if (key == platform::NSFileSystemNumber) {
            fileSystemNumber = forced(value.exactUInt64(), key);
        } else if (key == platform::NSFileSystemFileNumber) {
            fileNumber = forced(value.exactUInt64(), key);
        } else if (key == platform::NSFileOwnerAccountName) {
            ownerNameTextbox->setStringValue(forcedKind<std::string>(entry));
        } else if (key == platform::NSFileOwnerAccountID) {
            ownerIDTextbox->setStringValue(unsignedIntText(entry));
        } else if (key == platform::NSFileGroupOwnerAccountName) {
            groupNameTextbox->setStringValue(forcedKind<std::string>(entry));
        } else if (key == platform::NSFileGroupOwnerAccountID) {
            groupIDTextbox->setStringValue(unsignedIntText(entry));
        } else if (key == platform::NSFileCreationDate) {
            createdTextbox->setStringValue(forcedKind<platform::Date>(entry).description());
        } else if (key == platform::NSFileModificationDate) {
            modifiedTextbox->setStringValue(forcedKind<platform::Date>(entry).description());
        } else if (key == platform::NSFileType) {
            showType(sizes.url(), forcedKind<std::string>(entry));
        } else if (key == platform::NSFileReferenceCount) {
            refCountTextbox->setStringValue(unsignedIntText(entry));
        } else if (key == platform::NSFileExtendedAttributes) {
            appendXattrLine(key + " : " + platform::description(value) + "\n");
        }
    }
    if (fileSystemNumber != 0 && fileNumber != 0) {
        volfsPathTextbox->setStringValue(
            "/.vol/" + std::to_string(fileSystemNumber) + "/" + std::to_string(fileNumber));
    }
}

void ViewController::showType(const platform::URL& url, const std::string& fileType) {
    static constexpr std::array<std::string_view, 1> keys{platform::NSURLTypeIdentifierKey};
    auto values = sources_.resources.resourceValuesForKeys(url, keys);
    std::optional<std::string> identifier;
    if (values) {
        identifier = platform::URLResourceValues(*std::move(values)).typeIdentifier();
    }
    typeTextbox->setStringValue(fileType + ": " + identifier.value_or("N/A"));
}

void ViewController::showBookmark(const platform::URL& url) {
    static constexpr std::string_view noBookmark = "(couldn't get bookmark)";
    const auto bookmark = sources_.bookmarks.bookmarkData(url);
    if (!bookmark) {
        bookmarkPathTextbox->setStringValue(std::string(noBookmark));
        return;
    }
    // No font: the bookmark's text does not follow the text size.
    if (platform::TextStorage* storage = bookmarkTextbox->textStorage()) {
        storage->setAttributedString(
            {platform::base64EncodedString(*bookmark), {platform::Color::textColor, {}}});
    }

    const auto resolved = sources_.bookmarks.URLByResolvingBookmarkData(*bookmark);
    if (!resolved) {
        bookmarkPathTextbox->setStringValue(std::string(noBookmark));
    } else if (resolved->url) {
        bookmarkPathTextbox->setStringValue(platform::shownText(resolved->url->path()));
    } else {
        bookmarkPathTextbox->setStringValue("(couldn't resolve)");
    }
}

} // namespace tolvane::details
