#pragma once

#include "details/ViewController.h"
#include "inspect/Document.h"
#include "platform/memory/MemoryPasteboard.h"
#include "platform/memory/MemorySavePanel.h"
#include "platform/memory/MemoryStoryboard.h"
#include "platform/memory/MemoryUserDefaults.h"
#include "tests/support/ScriptedSources.h"

#include <memory>
#include <string>

namespace tolvane::tests {

/// A document with its details window over scripted backends: a regular file /data/notes.txt with two
/// attributes, whose bookmark is made and resolved, until a test says otherwise. Nothing is opened before
/// `open`.
class DetailsWindow {
public:
    DetailsWindow();

    /// Opens the document: reads it, makes its window and shows it.
    void open();

    /// Makes the window's document read once more.
    void readAgain();

    details::ViewController& controller() const { return *controller_; }
    const std::shared_ptr<details::ViewController>& sharedController() const { return controller_; }
    platform::Window& window() const { return *controller_->view().window(); }
    const std::shared_ptr<inspect::Document>& document() const { return document_; }

    std::string attributesText() const { return controller_->inodeText->textStorage()->string(); }
    std::string bookmarkText() const { return controller_->bookmarkTextbox->textStorage()->string(); }

    /// Hides the window and shows it again, which is an appearance.
    void showAgain();

    details::DetailsSources detailsSources();
    inspect::FileSources fileSources() const { return {resources, fileManager, attributes}; }

    CallLog log;
    platform::URL url = platform::URL::fileURLWithPath("/data/notes.txt");
    ScriptedURLResources resources{log};
    ScriptedFileManager fileManager{log};
    ScriptedExtendedAttributes attributes{log};
    ScriptedBookmarks bookmarks{log};
    ScriptedSession session;
    ScriptedTextFiles textFiles;
    platform::MemorySavePanels savePanels;
    platform::MemoryPasteboard pasteboard;
    platform::MemoryUserDefaults defaults;
    platform::MemoryBundle bundle;

private:
    std::shared_ptr<inspect::Document> document_;
    std::shared_ptr<details::ViewController> controller_;
};

} // namespace tolvane::tests
