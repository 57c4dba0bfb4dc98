#include "platform/model/ViewController.h"

#include "platform/model/Window.h"

#include <utility>

namespace tolvane::platform {

ViewController::ViewController(std::optional<std::string> nibName, const Bundle* bundle)
    : nibName_(std::move(nibName))
    , bundle_(bundle) {}

ViewController::ViewController(const Coder& coder) : nibName_(coder.sceneIdentifier) {}

void ViewController::loadViewIfNeeded() {
    if (viewLoaded_) {
        return;
    }
    viewLoaded_ = true;
    viewDidLoad();
}

} // namespace tolvane::platform
