#pragma once

#include "details/GatherDetails.h"
#include "details/ViewController.h"
#include "inspect/Document.h"
#include "tests/support/MemoryDocumentController.h"
#include "tests/support/MemoryFileContents.h"
#include "tests/support/MemoryPasteboard.h"
#include "tests/support/MemorySavePanel.h"
#include "tests/support/MemoryStoryboard.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/ScriptedSources.h"
#include "tests/support/WaitingTasks.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace tolvane::tests {

/// Scripted services for a regular file /data/notes.txt with two attributes, whose bookmark can be made and
/// resolved unless a test changes that.
class ScriptedFile {
public:
    ScriptedFile();

    inspect::FileSources fileSources() const { return {resources, fileManager, attributes}; }
    inspect::SizeData sizes() const { return {url, fileSources()}; }

    /// One pass over the file's size record.
    details::GatheredDetails gather() const {
        return details::gatherDetails(sizes(), {resources, bookmarks, session});
    }

    /// The attributes in the file manager's dictionary.
    void setAttributes(const platform::Dictionary& values) {
        fileManager.answer->set(platform::NSFileExtendedAttributes, values);
    }

    CallLog log;
    platform::URL url = platform::URL::fileURLWithPath("/data/notes.txt");
    ScriptedURLResources resources{log};
    ScriptedFileManager fileManager{log};
    ScriptedExtendedAttributes attributes{log};
    ScriptedBookmarks bookmarks{log};
    ScriptedSession session;
};

/// A document with its details window over a scripted file. There is neither before `open` or `makeWindow`.
class DetailsWindow : public ScriptedFile {
public:
    DetailsWindow();

    /// Opens the document: reads it, makes its window and shows it.
    void open();

    /// Makes the document, which has read nothing, and its window, which is not shown.
    void makeWindow();

    /// Makes the window's document read once more.
    void readAgain();

    details::ViewController& controller() const { return *controller_; }
    const std::shared_ptr<details::ViewController>& sharedController() const { return controller_; }
    platform::Window& window() const { return *controller_->view().window(); }
    const std::shared_ptr<inspect::Document>& document() const { return document_; }

    std::string attributesText() const { return controller_->inodeText->textStorage()->string(); }

    /// Performs the action of a menu item or button.
    void perform(std::string_view selector) const;

    /// Hides the window and shows it again, which is an appearance.
    void showAgain();

    details::DetailsSources detailsSources();

    ScriptedTextFiles textFiles;
    platform::MemorySavePanels savePanels;
    platform::MemoryPasteboard pasteboard;
    platform::MemoryUserDefaults defaults;
    platform::MemoryBundle bundle;
    std::map<std::string, std::string> fileTexts; ///< The contents of files by path.
    std::shared_ptr<const platform::FileContents> contents = std::make_shared<MemoryFileContents>(fileTexts);
    FixedStatusFacts statusFacts;
    WaitingTasks tasks;
    platform::MemoryDocumentController documents{
        resources, [this] { return std::make_shared<inspect::Document>(fileSources(), bundle); }};

private:
    std::shared_ptr<inspect::Document> document_;
    std::shared_ptr<details::ViewController> controller_;
};

} // namespace tolvane::tests
