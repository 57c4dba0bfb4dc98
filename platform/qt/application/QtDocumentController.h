#pragma once

#include "platform/model/ActionTarget.h"
#include "platform/model/Document.h"
#include "platform/model/Observers.h"
#include "platform/qt/application/StepsAfterPainting.h"
#include "platform/services/URLResources.h"

#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

class RecentDocuments;

/// Opens documents, keeps them while one of their windows is open, and remembers recent files. A file that is
/// open already has its window brought to the front.
class QtDocumentController final : public DocumentController, public ActionTarget {
public:
    struct Parts {
        const URLResources& resources;
        RecentDocuments& recentDocuments;
        std::function<std::shared_ptr<Document>()> makeDocument;
        /// Shows why files could not be opened, without waiting. The details may be long or empty.
        std::function<void(const std::string& message, const std::string& reason, const std::string& details)>
            presentError;
        /// Asks the user for files and folders and passes on the chosen ones.
        std::function<void(std::function<void(const std::vector<URL>&)>)> chooseFiles;
    };

    explicit QtDocumentController(Parts parts);

    Result<std::shared_ptr<Document>> openDocumentWithContentsOfURL(const URL& url) override;

    Result<std::shared_ptr<Document>> reopenDocument(const std::shared_ptr<Document>& document) override;

    /// Opens each, and reports those that cannot be opened in one alert. The first is opened at once, the
    /// others one by one after its window was painted.
    void openDocuments(const std::vector<URL>& urls);

    /// Whether some of them are still to be opened.
    bool isOpening() const { return steps_.isRunning(); }

    /// The open documents in the order of their opening.
    const std::vector<std::shared_ptr<Document>>& documents() const { return documents_; }

    /// "openDocument:" asks for files.
    std::function<void(Sender)> actionForSelector(std::string_view selector) override;

private:
    struct WatchedWindow {
        std::weak_ptr<Document> document;
        Subscription subscription;
    };

    struct Failure {
        URL url;
        Error error;
    };

    void openDocument(Sender sender);

    /// Opens the next waiting file that can be opened; returns whether more wait.
    bool openNext();
    void presentFailures(const std::vector<Failure>& failures) const;
    std::shared_ptr<Document> documentFor(const URL& url) const;
    void letGoWhenClosed(const std::shared_ptr<Document>& document);
    void removeClosedDocuments();

    Parts parts_;
    std::vector<std::shared_ptr<Document>> documents_;
    std::vector<WatchedWindow> watched_;
    std::deque<URL> waiting_;
    std::vector<Failure> failures_; ///< Of those that were opened together.
    StepsAfterPainting steps_;
    QTimer removal_;
};

} // namespace tolvane::platform
