#include "platform/services/DocumentOpening.h"

#include "platform/model/Document.h"

#include <string>
#include <utility>
#include <vector>

namespace tolvane::platform {

namespace {

Result<void> read(Document& document, const URL& url) {
    document.setFileURL(url);
    Error error;
    if (!document.readFromURL(url, "public.item", &error)) {
        return std::unexpected(std::move(error));
    }
    return {};
}

bool haveOneIdentity(const Dictionary& a, const Dictionary& b) {
    const Value* const first = a.find(NSURLFileResourceIdentifierKey);
    const Value* const second = b.find(NSURLFileResourceIdentifierKey);
    return first == nullptr || second == nullptr ? first == second : *first == *second;
}

} // namespace

Result<URL> identifiedURL(
    const URL& url, const URLResources& resources, std::span<const std::string_view> moreKeys) {
    std::vector<std::string_view> keys(rememberedKeys.begin(), rememberedKeys.end());
    keys.insert(keys.end(), moreKeys.begin(), moreKeys.end());
    auto values = resources.resourceValuesForKeys(url, keys);
    if (!values) {
        return std::unexpected(values.error());
    }
    URL opened = url;
    std::string path = url.path();
    if (path.size() > 1 && path.ends_with('/')) {
        while (path.size() > 1 && path.ends_with('/')) {
            path.pop_back();
        }
        URL shorter = URL::fileURLWithPath(path);
        const auto shorterValues = resources.resourceValuesForKeys(shorter, rememberedKeys);
        if (shorterValues && haveOneIdentity(*shorterValues, *values)) {
            opened = std::move(shorter);
        }
    }
    opened.keepResourceValues(*std::move(values));
    return opened;
}

Result<void> openDocument(Document& document, const URL& url) {
    if (auto hasRead = read(document, url); !hasRead) {
        return hasRead;
    }
    document.makeWindowControllers();
    document.showWindows();
    return {};
}

Result<void> openInWindowsOf(Document& open, Document& document, const URL& url) {
    if (auto hasRead = read(document, url); !hasRead) {
        return hasRead;
    }
    document.takeWindowControllers(open);
    return {};
}

} // namespace tolvane::platform
