#include "platform/model/Document.h"

#include "platform/model/WindowController.h"
#include "platform/values/Utf8.h"

#include <algorithm>

namespace tolvane::platform {

std::string Document::displayName() const {
    return fileURL_ ? shownText(fileURL_->lastPathComponent()) : std::string();
}

void Document::addWindowController(std::shared_ptr<WindowController> controller) {
    controller->setDocument(shared_from_this());
    windowControllers_.push_back(std::move(controller));
}

void Document::takeWindowControllers(Document& other) {
    for (auto& controller : std::exchange(other.windowControllers_, {})) {
        addWindowController(std::move(controller));
    }
}

void Document::showWindows() {
    // A window that appears may close and release the document; then no further window is shown.
    const auto kept = weak_from_this().lock();
    const auto controllers = windowControllers_;
    for (const auto& controller : controllers) {
        if (std::ranges::find(windowControllers_, controller) != windowControllers_.end()) {
            controller->showWindow();
        }
    }
}

void Document::close() {
    const auto controllers = std::exchange(windowControllers_, {});
    for (const auto& controller : controllers) {
        controller->close();
    }
}

} // namespace tolvane::platform
