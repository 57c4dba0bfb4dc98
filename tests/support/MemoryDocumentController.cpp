#include "tests/support/MemoryDocumentController.h"

#include "platform/model/Document.h"
#include "platform/services/DocumentOpening.h"

#include <utility>

namespace tolvane::platform {

Result<std::shared_ptr<Document>> MemoryDocumentController::openDocumentWithContentsOfURL(const URL& url) {
    const Result<URL> opened = identifiedURL(url, resources_);
    if (!opened) {
        return std::unexpected(opened.error());
    }
    std::shared_ptr<Document> document = makeDocument_();
    if (auto read = openDocument(*document, *opened); !read) {
        return std::unexpected(std::move(read.error()));
    }
    return document;
}

Result<std::shared_ptr<Document>> MemoryDocumentController::reopenDocument(
    const std::shared_ptr<Document>& document) {
    const Result<URL> found = identifiedURL(document->fileURL().value().withoutKeptValues(), resources_);
    if (!found) {
        return std::unexpected(found.error());
    }
    std::shared_ptr<Document> reopened = makeDocument_();
    if (auto read = openInWindowsOf(*document, *reopened, *found); !read) {
        return std::unexpected(std::move(read.error()));
    }
    std::erase(reopened_, document);
    reopened_.push_back(reopened);
    return reopened;
}

} // namespace tolvane::platform
