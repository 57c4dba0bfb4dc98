#pragma once

#include "platform/DocumentController.h"
#include "platform/URLResources.h"

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

    /// A path that ends in "/" is opened without it where that names the same item, and as it stands where it
    /// does not: after a symbolic link the slash asks for the folder that the link leads to.
    Result<std::shared_ptr<Document>> openDocumentWithContentsOfURL(const URL& url) override;

private:
    /// The URL to open, keeping the identity of the item that is there.
    Result<URL> identified(const URL& url) const;

    const URLResources& resources_;
    DocumentFactory makeDocument_;
};

} // namespace tolvane::platform
