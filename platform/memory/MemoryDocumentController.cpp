#include "platform/memory/MemoryDocumentController.h"

#include "platform/Document.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::platform {

namespace {

constexpr std::array<std::string_view, 1> identityKeys{NSURLFileResourceIdentifierKey};

} // namespace

Result<URL> MemoryDocumentController::identified(const URL& url) const {
    auto values = resources_.resourceValuesForKeys(url, identityKeys);
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
        const auto shorterValues = resources_.resourceValuesForKeys(shorter, identityKeys);
        if (shorterValues && *shorterValues == *values) {
            opened = std::move(shorter);
        }
    }
    if (identity != nullptr) {
        opened.keepResourceValue(NSURLFileResourceIdentifierKey, *identity);
    }
    return opened;
}

Result<std::shared_ptr<Document>> MemoryDocumentController::openDocumentWithContentsOfURL(const URL& url) {
    Result<URL> opened = identified(url);
    if (!opened) {
        return std::unexpected(std::move(opened.error()));
    }

    std::shared_ptr<Document> document = makeDocument_();
    document->setFileURL(*opened);
    Error error;
    if (!document->readFromURL(*opened, "public.item", &error)) {
        return std::unexpected(std::move(error));
    }
    document->makeWindowControllers();
    document->showWindows();
    return document;
}

} // namespace tolvane::platform
