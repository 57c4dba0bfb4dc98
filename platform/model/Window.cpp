#include "platform/model/Window.h"

#include "platform/model/ContentController.h"
#include "platform/model/WindowController.h"

namespace tolvane::platform {

void Window::setTitle(std::string title) {
    if (title == title_) {
        return;
    }
    title_ = std::move(title);
    observers_.notify();
}

void Window::setStatus(std::string status) {
    if (status == status_) {
        return;
    }
    status_ = std::move(status);
    observers_.notify();
}

void Window::makeKeyAndOrderFront() {
    // Kept alive, since an observer may release the controllers and with them the window.
    const auto controller = windowController();
    const auto content = contentViewController();
    if (!visible_) {
        visible_ = true;
        observers_.notify();
        if (content) {
            content->loadViewIfNeeded();
            content->viewDidAppear();
        }
    }
    orderFrontObservers_.notify();
}

void Window::orderOut() {
    if (!visible_) {
        return;
    }
    visible_ = false;
    observers_.notify();
}

void Window::close() {
    if (!visible_ || closing_) {
        return;
    }
    // Kept alive, since the delegate may release the controllers and with them the window.
    const auto controller = windowController();
    const auto content = contentViewController();
    closing_ = true;
    if (const auto told = delegate()) {
        told->windowWillClose();
    }
    willCloseObservers_.notify();
    closing_ = false;
    orderOut();
}

} // namespace tolvane::platform
