#include "platform/model/WindowController.h"

#include "platform/model/Document.h"

namespace tolvane::platform {

std::shared_ptr<WindowController> WindowController::make(
    std::shared_ptr<Window> window, std::shared_ptr<ViewController> content) {
    auto controller = std::make_shared<WindowController>(Key{}, std::move(window), std::move(content));
    Window& shown = *controller->window_;
    shown.setWindowController(controller);
    if (controller->content_) {
        shown.setContentViewController(controller->content_);
        controller->content_->view().setWindow(controller->window_);
    }
    return controller;
}

void WindowController::setDocument(const std::shared_ptr<Document>& document) {
    document_ = document;
    if (document) {
        window_->setTitle(document->displayName());
    }
}

} // namespace tolvane::platform
