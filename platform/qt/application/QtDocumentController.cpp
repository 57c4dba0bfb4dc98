#include "platform/qt/application/QtDocumentController.h"

#include "platform/model/WindowController.h"
#include "platform/qt/application/RecentDocuments.h"
#include "platform/qt/text/VisibleText.h"
#include "platform/services/DocumentOpening.h"
#include "platform/values/Utf8.h"

namespace tolvane::platform {

namespace {

bool hasVisibleWindow(const Document& document) {
    return std::ranges::any_of(document.windowControllers(), [](const auto& controller) {
        return controller->window()->isVisible();
    });
}

/// Bytes as text in which nothing begins another line.
std::string onOneLine(std::string_view bytes) {
    return visibleText(QString::fromStdString(shownText(bytes))).toStdString();
}

/// A name that leaves room for what is said of it.
std::string shortName(const URL& url) {
    constexpr qsizetype longestName = 60;
    const QString name = QString::fromStdString(onOneLine(url.lastPathComponent()));
    return "“" + cutInMiddle(name, longestName).toStdString() + "”";
}

} // namespace

QtDocumentController::QtDocumentController(Parts parts) : parts_(std::move(parts)) {
    removal_.setSingleShot(true);
    QObject::connect(&removal_, &QTimer::timeout, &removal_, [this] { removeClosedDocuments(); });
}

Result<std::shared_ptr<Document>> QtDocumentController::openDocumentWithContentsOfURL(const URL& url) {
    const Result<URL> opened = identifiedURL(url, parts_.resources);
    if (!opened) {
        return std::unexpected(opened.error());
    }
    parts_.recentDocuments.add(*opened);
    if (auto open = documentFor(*opened)) {
        open->showWindows();
        return open;
    }
    std::shared_ptr<Document> document = parts_.makeDocument();
    if (auto read = platform::openDocument(*document, *opened); !read) {
        return std::unexpected(std::move(read.error()));
    }
    documents_.push_back(document);
    letGoWhenClosed(document);
    return document;
}

Result<std::shared_ptr<Document>> QtDocumentController::reopenDocument(
    const std::shared_ptr<Document>& document) {
    const Result<URL> found =
        identifiedURL(document->fileURL().value().withoutKeptValues(), parts_.resources);
    if (!found) {
        return std::unexpected(found.error());
    }
    std::shared_ptr<Document> reopened = parts_.makeDocument();
    if (auto read = openInWindowsOf(*document, *reopened, *found); !read) {
        return std::unexpected(std::move(read.error()));
    }
    std::ranges::replace(documents_, document, reopened);
    letGoWhenClosed(reopened);
    return reopened;
}

void QtDocumentController::openDocuments(const std::vector<URL>& urls) {
    if (!isOpening()) {
        // Some may be left from when the program was told to quit and did not.
        waiting_.clear();
        failures_.clear();
    }
    waiting_.insert(waiting_.end(), urls.begin(), urls.end());
    if (!isOpening() && openNext()) {
        steps_.start([this] { return openNext(); });
    }
}

bool QtDocumentController::openNext() {
    bool isOpened = false;
    while (!isOpened && !waiting_.empty()) {
        const URL url = std::move(waiting_.front());
        waiting_.pop_front();
        auto document = openDocumentWithContentsOfURL(url);
        isOpened = document.has_value();
        if (!isOpened) {
            failures_.push_back({url, std::move(document.error())});
        }
    }
    if (!waiting_.empty()) {
        return true;
    }
    presentFailures(std::exchange(failures_, {}));
    return false;
}

void QtDocumentController::presentFailures(const std::vector<Failure>& failures) const {
    if (failures.empty()) {
        return;
    }
    if (failures.size() == 1) {
        const auto& [url, error] = failures.front();
        parts_.presentError(
            "“" + shownText(url.lastPathComponent()) + "” could not be opened.",
            error.localizedDescription() + "\n" + onOneLine(url.path()), {});
        return;
    }
    constexpr std::size_t namedAtOnce = 10;
    std::string reasons;
    std::string details;
    for (std::size_t index = 0; index < failures.size(); ++index) {
        const auto& [url, error] = failures[index];
        const std::string reason = onOneLine(error.localizedDescription());
        if (index < namedAtOnce) {
            reasons += (index == 0 ? "" : "\n") + shortName(url) + ": " + reason;
        }
        details += onOneLine(url.path()) + ": " + reason + "\n";
    }
    if (failures.size() > namedAtOnce) {
        reasons += "\nand " + std::to_string(failures.size() - namedAtOnce) + " more";
    }
    parts_.presentError(std::to_string(failures.size()) + " items could not be opened.", reasons, details);
}

std::function<void(Sender)> QtDocumentController::actionForSelector(std::string_view selector) {
    static constexpr std::array<NamedAction<QtDocumentController>, 1> actions{{
        {"openDocument:", &QtDocumentController::openDocument},
    }};
    return actionIn(actions, *this, selector);
}

void QtDocumentController::openDocument(Sender /*sender*/) {
    parts_.chooseFiles([this](const std::vector<URL>& chosen) { openDocuments(chosen); });
}

std::shared_ptr<Document> QtDocumentController::documentFor(const URL& url) const {
    const auto open = std::ranges::find_if(documents_, [&url](const auto& document) {
        return document->fileURL() == std::optional(url) && hasVisibleWindow(*document);
    });
    return open == documents_.end() ? nullptr : *open;
}

void QtDocumentController::letGoWhenClosed(const std::shared_ptr<Document>& document) {
    for (const auto& controller : document->windowControllers()) {
        // Later, since the window is still in use while it closes.
        watched_.push_back({document, controller->window()->observeWillClose([this] { removal_.start(); })});
    }
}

void QtDocumentController::removeClosedDocuments() {
    std::vector<std::shared_ptr<Document>> gone;
    std::erase_if(documents_, [&gone](const auto& document) {
        const bool isClosed = !hasVisibleWindow(*document);
        if (isClosed) {
            gone.push_back(document);
        }
        return isClosed;
    });
    for (const auto& document : gone) {
        document->close();
    }
    std::erase_if(watched_, [this](const WatchedWindow& watched) {
        const auto document = watched.document.lock();
        return std::ranges::find(documents_, document) == documents_.end();
    });
}

} // namespace tolvane::platform
