#include "inspect/Document.h"

#include "platform/model/WindowController.h"
#include "platform/values/FatalError.h"

#include <utility>

namespace tolvane::inspect {

void Document::makeWindowControllers() {
    const platform::Storyboard* storyboard = mainBundle_.storyboardWithName("Main");
    if (storyboard == nullptr) {
        platform::fatalError("storyboard \"Main\" not found");
    }
    auto controller = std::dynamic_pointer_cast<platform::WindowController>(
        storyboard->instantiateControllerWithIdentifier("Document Window Controller"));
    if (!controller) {
        platform::fatalError("\"Document Window Controller\" is not a window controller");
    }
    addWindowController(std::move(controller));
}

bool Document::readFromURL(
    const platform::URL& url, std::string_view /*typeName*/, platform::Error* /*error*/) {
    theSizes_.push_back(std::make_shared<const SizeData>(url, sources_));
    return true;
}

} // namespace tolvane::inspect
