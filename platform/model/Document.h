#pragma once

#include "platform/values/Error.h"
#include "platform/values/URL.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

class WindowController;

/// The base of the application's documents. The document controller makes one for each opened file, sets the
/// file's URL, has it read and make its window controllers, and shows their windows. The document owns its
/// window controllers, and through them its windows.
class Document : public std::enable_shared_from_this<Document> {
public:
    Document() = default;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    virtual ~Document() = default;

    const std::optional<URL>& fileURL() const { return fileURL_; }
    void setFileURL(URL url) { fileURL_ = std::move(url); }

    /// The document's name for display: the file's name as valid UTF-8, empty without a file.
    std::string displayName() const;

    /// Reads the file; on failure returns false and sets `error` unless that is null.
    virtual bool readFromURL(const URL& url, std::string_view typeName, Error* error) = 0;

    /// Makes the document's window controllers and adds them.
    virtual void makeWindowControllers() = 0;

    /// True if there are unsaved changes.
    virtual bool isDocumentEdited() const { return false; }

    void addWindowController(std::shared_ptr<WindowController> controller);
    const std::vector<std::shared_ptr<WindowController>>& windowControllers() const {
        return windowControllers_;
    }

    /// Takes over the window controllers of another document.
    void takeWindowControllers(Document& other);

    /// Brings every window of the document to the front.
    void showWindows();

    /// Closes the windows and releases their controllers.
    void close();

private:
    std::optional<URL> fileURL_;
    std::vector<std::shared_ptr<WindowController>> windowControllers_;
};

class Document;

/// Opens documents for the user's URLs.
class DocumentController {
public:
    virtual ~DocumentController() = default;

    /// Opens the item as a document and shows its windows. Fails, before a document is made, if the item does
    /// not exist or cannot be accessed. The document's URL keeps the item's identity of this moment. The
    /// caller owns the document; `Document::close` closes its windows.
    virtual Result<std::shared_ptr<Document>> openDocumentWithContentsOfURL(const URL& url) = 0;

    /// Opens the item of a document again, as it is now: a new document takes over the windows, and the old
    /// one is released. Fails likewise, and then nothing has changed.
    virtual Result<std::shared_ptr<Document>> reopenDocument(const std::shared_ptr<Document>& document) = 0;
};

} // namespace tolvane::platform
