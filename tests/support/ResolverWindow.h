#pragma once

#include "platform/WindowController.h"
#include "platform/memory/MemoryStoryboard.h"
#include "platform/memory/MemoryUserDefaults.h"
#include "resolver/TRViewController.h"
#include "tests/support/ScriptedPanels.h"
#include "tests/support/ScriptedSources.h"

#include <memory>
#include <string>

namespace tolvane::tests {

/// A bookmark resolver window over scripted backends. Every text that is base-64 is a bookmark of the file
/// /data/notes.txt on device 5 with file number 123, until a test says otherwise. Nothing is opened before
/// `open`.
class ResolverWindow {
public:
    ResolverWindow();

    /// Makes the window from the storyboard and shows it.
    void open();

    resolver::TRViewController& controller() const { return *controller_; }
    const std::shared_ptr<resolver::TRViewController>& sharedController() const { return controller_; }
    platform::Window& window() const { return *controller_->view().window(); }

    /// Hides the window and shows it again, which is an appearance.
    void showAgain();

    /// Lets go of the window controller and of the content, as closing for good does.
    void letGo();

    /// Puts text into the input box as a user does who types or pastes it.
    void paste(std::string text) const;

    /// Analyses or resolves this text.
    void analyse(std::string text) const;
    void resolve(std::string text) const;

    std::string inputText() const { return controller_->inputTextbox->string(); }
    std::string outputText() const { return controller_->outputTextbox->string(); }
    const std::string& pathText() const { return controller_->filePathTextbox->stringValue(); }

    resolver::ResolverSources resolverSources();

    CallLog log;
    platform::URL url = platform::URL::fileURLWithPath("/data/notes.txt");
    ScriptedBookmarks bookmarks{log};
    ScriptedBookmarkProperties properties{log};
    ScriptedFileManager fileManager{log};
    ScriptedOpenPanels openPanels{log};
    ScriptedAppleScripts appleScripts{log};
    ScriptedPreviewPanels previewPanels{log};
    platform::MemoryUserDefaults defaults;
    platform::MemoryBundle bundle;

    /// A text that is base-64, and one that is not.
    static constexpr const char* bookmarkText = "Ym9va21hcms=";
    static constexpr const char* garbage = "Couldn't";

    /// What the output box shows for any bookmark.
    static constexpr const char* analysis =
        "Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkAllPropertiesKey): {\n"
        "    NSURLNameKey = \"notes.txt\";\n"
        "}])\n\n\n"
        "Optional([__C.NSURLResourceKey(_rawValue: NSURLBookmarkDetailedDescription): first line\n"
        "second line])";

private:
    std::shared_ptr<platform::WindowController> windowController_;
    std::shared_ptr<resolver::TRViewController> controller_;
};

} // namespace tolvane::tests
