#pragma once

#include "platform/model/Document.h"
#include "platform/services/URLResources.h"

#include <functional>
#include <memory>

namespace tolvane::platform {

/// The document machinery without a screen: it opens documents and leaves them to the caller.
class MemoryDocumentController final : public DocumentController {
public:
    using DocumentFactory = std::function<std::shared_ptr<Document>()>;

    /// `resources` outlives this object.
    MemoryDocumentController(const URLResources& resources, DocumentFactory makeDocument)
        : resources_(resources)
        , makeDocument_(std::move(makeDocument)) {}

    Result<std::shared_ptr<Document>> openDocumentWithContentsOfURL(const URL& url) override;

private:
    const URLResources& resources_;
    DocumentFactory makeDocument_;
};

} // namespace tolvane::platform
