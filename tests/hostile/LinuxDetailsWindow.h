#pragma once

#include "details/ViewController.h"
#include "inspect/Document.h"
#include "platform/linux/LinuxBookmarks.h"
#include "platform/linux/LinuxExtendedAttributeCalls.h"
#include "platform/linux/LinuxFileManager.h"
#include "platform/linux/LinuxTextFiles.h"
#include "platform/linux/LinuxURLResources.h"
#include "platform/linux/LinuxUserSession.h"
#include "platform/linux/TypeTable.h"
#include "platform/memory/MemoryDocumentController.h"
#include "platform/memory/MemoryPasteboard.h"
#include "platform/memory/MemorySavePanel.h"
#include "platform/memory/MemoryStoryboard.h"
#include "platform/memory/MemoryUserDefaults.h"

#include <memory>
#include <string>

namespace tolvane::tests {

/// The details window of a real item, over everything that the program itself uses but the screen.
class LinuxDetailsWindow {
public:
    /// An item that cannot be opened fails the test.
    explicit LinuxDetailsWindow(const std::string& item);

    /// Saves to this path, as a user does who chooses it in the panel.
    void save(const std::string& path);

    /// The text of the attributes, at the end of which failures are told.
    std::string attributesText() const { return controller_->inodeText->string(); }

    /// The report saved last.
    const std::string& report() const { return controller_->saveString(); }

private:
    platform::TypeTable typeTable_ = platform::TypeTable::withoutDeclarations();
    platform::LinuxExtendedAttributeCalls extendedAttributes_;
    platform::LinuxFileManager fileManager_{extendedAttributes_};
    platform::LinuxURLResources resources_{typeTable_};
    platform::LinuxBookmarks bookmarks_;
    platform::LinuxUserSession session_;
    platform::LinuxTextFiles textFiles_;
    platform::MemorySavePanels savePanels_;
    platform::MemoryPasteboard pasteboard_;
    platform::MemoryUserDefaults defaults_;
    platform::MemoryBundle bundle_;
    platform::MemoryDocumentController documents_;
    std::shared_ptr<platform::Document> document_;
    std::shared_ptr<details::ViewController> controller_;
};

} // namespace tolvane::tests
