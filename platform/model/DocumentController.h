#pragma once

#include "platform/values/Error.h"
#include "platform/values/URL.h"

#include <memory>

namespace tolvane::platform {

class Document;

/// Opens documents for the user's URLs.
class DocumentController {
public:
    virtual ~DocumentController() = default;

    /// Opens the item as a document and shows its windows. Fails, before a document is made, if the item does
    /// not exist or cannot be accessed. The document's URL keeps the item's identity of this moment. The
    /// caller owns the document; `Document::close` closes its windows.
    virtual Result<std::shared_ptr<Document>> openDocumentWithContentsOfURL(const URL& url) = 0;

    /// Opens the item of a document once more, as it is now: a new document takes over the windows, and the
    /// document is let go. Fails likewise, and then nothing has changed.
    virtual Result<std::shared_ptr<Document>> reopenDocument(const std::shared_ptr<Document>& document) = 0;
};

} // namespace tolvane::platform
