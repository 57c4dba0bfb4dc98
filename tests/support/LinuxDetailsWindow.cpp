#include "tests/support/LinuxDetailsWindow.h"

#include "platform/model/WindowController.h"
#include "platform/services/Panels.h"

#include <gtest/gtest.h>

namespace tolvane::tests {

using platform::URL;

LinuxDetailsWindow::LinuxDetailsWindow(const std::string& item) {
    bundle_.storyboard("Main").addWindowScene(
        "Document Window Controller", [this](const platform::Coder& coder) {
            return details::ViewController::initWithCoder(
                coder, {system_.resources,
                        system_.bookmarks,
                        system_.session,
                        system_.textFiles,
                        savePanels_,
                        pasteboard_,
                        defaults_,
                        documents_,
                        {.explanations =
                             {.files = {system_.resources, system_.fileManager, system_.extendedAttributes},
                              .contents = *system_.fileContents},
                         .sharedContents = system_.fileContents}});
        });
    const auto opened = documents_.openDocumentWithContentsOfURL(URL::fileURLWithPath(item));
    if (!opened) {
        ADD_FAILURE() << item << " cannot be opened";
        return;
    }
    document_ = *opened;
    controller_ = std::dynamic_pointer_cast<details::ViewController>(
        document_->windowControllers().front()->contentViewController());
}

void LinuxDetailsWindow::save(const std::string& path) {
    controller_->saveCommand(nullptr);
    savePanels_.newest()->answer(platform::modalResponseOK, URL::fileURLWithPath(path));
}

} // namespace tolvane::tests
