#pragma once

#include "details/ViewController.h"
#include "inspect/Document.h"
#include "platform/linux/LinuxPlatform.h"
#include "tests/support/MemoryDocumentController.h"
#include "tests/support/MemoryPasteboard.h"
#include "tests/support/MemorySavePanel.h"
#include "tests/support/MemoryStoryboard.h"
#include "tests/support/MemoryUserDefaults.h"

#include <memory>
#include <string>

namespace tolvane::tests {

/// The details window of a real item, with the program's own services but without a screen.
class LinuxDetailsWindow {
public:
    /// An item that cannot be opened fails the test.
    explicit LinuxDetailsWindow(const std::string& item);

    /// Saves to this path, chosen in the panel.
    void save(const std::string& path);

    /// The text of the attributes, at the end of which failures are reported.
    std::string attributesText() const { return controller_->inodeText->string(); }

    /// The report saved last.
    const std::string& report() const { return controller_->saveString(); }

private:
    platform::LinuxPlatform system_{platform::TypeTable::withoutDeclarations()};
    platform::MemorySavePanels savePanels_;
    platform::MemoryPasteboard pasteboard_;
    platform::MemoryUserDefaults defaults_;
    platform::MemoryBundle bundle_;
    platform::MemoryDocumentController documents_{
        system_.resources, [this] {
            return std::make_shared<inspect::Document>(
                inspect::FileSources{system_.resources, system_.fileManager, system_.extendedAttributes},
                bundle_);
        }};
    std::shared_ptr<platform::Document> document_;
    std::shared_ptr<details::ViewController> controller_;
};

} // namespace tolvane::tests
