#pragma once

#include "cli/Arguments.h"
#include "cli/BookmarkInput.h"
#include "cli/Complaint.h"
#include "cli/Output.h"
#include "cli/ProgramSources.h"
#include "platform/WindowController.h"
#include "resolver/TRViewController.h"

#include <memory>
#include <string>
#include <string_view>

namespace tolvane::cli {

/// Makes, reads, shows and resolves bookmarks. Showing and resolving press the buttons of a resolver window
/// and print what it shows then; the reason that the window keeps to itself when something fails goes to
/// standard error, together with the window's own message.
class BookmarkCommand {
public:
    /// Both references outlive the command.
    BookmarkCommand(const ProgramSources& sources, Output& output) : sources_(sources), output_(output) {}

    ExitStatus run(const BookmarkMakeRequest& request);
    ExitStatus run(const BookmarkReadRequest& request);
    ExitStatus run(const BookmarkShowRequest& request);
    ExitStatus run(const BookmarkResolveRequest& request);

private:
    /// A resolver window whose input box holds the bookmark.
    struct Window {
        std::shared_ptr<platform::WindowController> windowController;
        std::shared_ptr<resolver::TRViewController> controller;
    };

    /// What a run of `show` or `resolve` is about.
    struct Subject {
        const BookmarkOrigin& origin;
        bool json = false;
    };

    platform::Result<platform::Data> newBookmark(const std::string& name) const;
    platform::Result<platform::Data> newAliasFile(const std::string& name) const;
    Window openWindow(const std::string& text) const;

    ExitStatus print(std::string_view text);
    void printAnalysis(const Window& window);
    ExitStatus showBytes(const Subject& subject, const Window& window, const BookmarkInput& input);
    ExitStatus printResolution(const Subject& subject, const Window& window);
    std::string reasonOfFailure() const;

    ExitStatus complainOf(std::string_view name, std::string_view reason);
    ExitStatus fail(const Subject& subject, std::string_view message, std::string_view reason);
    ExitStatus failToRead(const Subject& subject, const platform::Error& error);
    ExitStatus failToDecode(const Subject& subject, const Window& window, const BookmarkInput& input);

    const ProgramSources& sources_;
    Output& output_;
};

} // namespace tolvane::cli
