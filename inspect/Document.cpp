#include "inspect/Document.h"

#include "platform/model/WindowController.h"

namespace tolvane::inspect {

void Document::makeWindowControllers() {
    addWindowController(platform::windowControllerOfScene(mainBundle_, "Document Window Controller"));
}

bool Document::readFromURL(
    const platform::URL& url, std::string_view /*typeName*/, platform::Error* /*error*/) {
    theSizes_.push_back(std::make_shared<const SizeData>(url, sources_));
    return true;
}

} // namespace tolvane::inspect
