#pragma once

#include "platform/Error.h"
#include "platform/URL.h"

#include <memory>

namespace tolvane::platform {

class Document;

/// The document machinery: turns URLs that a user names into open documents.
class DocumentController {
public:
    virtual ~DocumentController() = default;

    /// Opens the item as a document and shows its windows. Fails, before a document is made, when nothing is
    /// there or it cannot be looked at. The document's URL keeps the identity that the item had at this
    /// moment. The caller owns the document; the windows close with `Document::close`.
    virtual Result<std::shared_ptr<Document>> openDocumentWithContentsOfURL(const URL& url) = 0;
};

} // namespace tolvane::platform
