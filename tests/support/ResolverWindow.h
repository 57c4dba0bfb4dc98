#pragma once

#include "platform/model/WindowController.h"
#include "resolver/TRViewController.h"
#include "tests/support/MemoryStoryboard.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/ScriptedPanels.h"
#include "tests/support/ScriptedSources.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvane::tests {

/// A bookmark resolver window over scripted services. Every base-64 text is a bookmark of the file
/// /data/notes.txt on device 5 with file number 123 unless a test changes that. Nothing is opened before
/// `open`.
class ResolverWindow {
public:
    ResolverWindow();

    /// Makes the window from the storyboard and shows it.
    void open();

    resolver::TRViewController& controller() const { return *controller_; }
    const std::shared_ptr<resolver::TRViewController>& sharedController() const { return controller_; }
    platform::Window& window() const { return *controller_->view().window(); }

    /// Performs the action of a menu item or button.
    void perform(std::string_view selector) const;

    /// Hides the window and shows it again, which is an appearance.
    void showAgain();

    /// Releases the window controller and the content, as closing for good does.
    void letGo();

    /// Sets the text of the input box, as typing or pasting does.
    void paste(std::string text) const;

    /// Analyses or resolves this text.
    void analyse(std::string text = bookmarkText) const;
    void resolve(std::string text = bookmarkText) const;

    std::string inputText() const { return controller_->inputTextbox->string(); }
    std::string outputText() const { return controller_->outputTextbox->string(); }
    const std::string& pathText() const { return controller_->filePathTextbox->stringValue(); }

    resolver::ResolverSources resolverSources();

    CallLog log;
    platform::URL url = platform::URL::fileURLWithPath("/data/notes.txt");
    ScriptedBookmarks bookmarks{log};
    ScriptedStoredProperties properties{log};
    ScriptedFileManager fileManager{log};
    ScriptedOpenPanels openPanels{log};
    ScriptedAppleScripts appleScripts{log};
    ScriptedPreviewPanels previewPanels{log};
    platform::MemoryUserDefaults defaults;
    /// What any bookmark and item differ in, and the bytes that were compared.
    std::vector<platform::ComparedFact> comparedFacts;
    std::vector<std::pair<platform::Data, platform::Data>> comparedWith;
    /// What is whole of bytes that are not a bookmark; nothing can be salvaged without it.
    std::optional<std::string> salvaged;
    platform::MemoryBundle bundle;

    /// A base-64 text, and an invalid one.
    static constexpr const char* bookmarkText = "Ym9va21hcms=";
    static constexpr const char* garbage = "Couldn't";

    /// The output box's text for any bookmark.
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
