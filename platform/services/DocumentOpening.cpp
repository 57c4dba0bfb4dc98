#include "platform/services/DocumentOpening.h"

#include "platform/model/Document.h"

namespace tolvane::platform {

constexpr std::array<std::string_view, 1> identityKeys{NSURLFileResourceIdentifierKey};

Result<URL> identifiedURL(const URL& url, const URLResources& resources) {
    auto values = resources.resourceValuesForKeys(url, identityKeys);
    if (!values) {
        return std::unexpected(std::move(values.error()));
    }
    const Value* identity = values->find(NSURLFileResourceIdentifierKey);

    URL opened = url;
    std::string path = url.path();
    if (path.size() > 1 && path.ends_with('/')) {
        while (path.size() > 1 && path.ends_with('/')) {
            path.pop_back();
        }
        URL shorter = URL::fileURLWithPath(path);
        const auto shorterValues = resources.resourceValuesForKeys(shorter, identityKeys);
        if (shorterValues && *shorterValues == *values) {
            opened = std::move(shorter);
        }
    }
    if (identity != nullptr) {
        opened.keepResourceValue(NSURLFileResourceIdentifierKey, *identity);
    }
    return opened;
}

Result<void> openDocument(Document& document, const URL& url) {
    document.setFileURL(url);
    Error error;
    if (!document.readFromURL(url, "public.item", &error)) {
        return std::unexpected(std::move(error));
    }
    document.makeWindowControllers();
    document.showWindows();
    return {};
}

} // namespace tolvane::platform
