#include "platform/model/WindowController.h"

#include "platform/model/Document.h"
#include "platform/model/Storyboard.h"

namespace tolvane::platform {

std::shared_ptr<WindowController> WindowController::make(
    std::shared_ptr<Window> window, std::shared_ptr<ContentController> content) {
    auto controller = std::make_shared<WindowController>(Key{}, std::move(window), std::move(content));
    Window& shown = *controller->window_;
    shown.setWindowController(controller);
    if (controller->content_) {
        shown.setContentViewController(controller->content_);
        controller->content_->view().setWindow(controller->window_);
    }
    return controller;
}

std::shared_ptr<WindowController> windowControllerOfScene(const Bundle& bundle, std::string_view identifier) {
    const Storyboard* storyboard = bundle.storyboardWithName("Main");
    if (storyboard == nullptr) {
        fatalError("storyboard \"Main\" not found");
    }
    auto controller = std::dynamic_pointer_cast<WindowController>(
        storyboard->instantiateControllerWithIdentifier(identifier));
    if (!controller) {
        fatalError("\"" + std::string(identifier) + "\" is not a window controller");
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
