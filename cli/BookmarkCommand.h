#pragma once

#include "cli/Arguments.h"
#include "cli/BookmarkInput.h"
#include "cli/Output.h"
#include "cli/Program.h"
#include "resolver/ResolveBookmark.h"

#include <string>
#include <string_view>

namespace tolvane::cli {

/// Makes, reads, shows and resolves bookmarks. Showing and resolving print the texts of the resolver window;
/// after a failure standard error gets the window's message and the reason, which the window does not show.
class BookmarkCommand {
public:
    /// Both references outlive the command.
    BookmarkCommand(const ProgramSources& sources, Output& output) : sources_(sources), output_(output) {}

    ExitStatus run(const BookmarkMakeRequest& request);
    ExitStatus run(const BookmarkReadRequest& request);
    ExitStatus run(const BookmarkShowRequest& request);
    ExitStatus run(const BookmarkResolveRequest& request);

private:
    /// What a run of `show` or `resolve` is about.
    struct Subject {
        const BookmarkOrigin& origin;
        bool json = false;
    };

    platform::Result<platform::Data> newBookmark(const std::string& name) const;
    platform::Result<platform::Data> newAliasFile(const std::string& name) const;

    ExitStatus extract(const std::string& file, const std::string& folder);

    ExitStatus print(std::string_view text);
    void printAnalysis(const BookmarkInput& input);
    ExitStatus printSalvaged(const Subject& subject, std::span<const std::byte> bytes);
    ExitStatus printResolution(
        const Subject& subject,
        std::span<const std::byte> bookmark,
        const resolver::BookmarkResolution& resolution,
        std::string_view appended);
    std::string comparisonText(
        std::span<const std::byte> bookmark, const platform::ResolvedBookmark& resolved) const;

    ExitStatus complainOf(std::string_view name, std::string_view reason);
    ExitStatus fail(const Subject& subject, std::string_view message, std::string_view reason);
    ExitStatus failToRead(const Subject& subject, const platform::Error& error);
    ExitStatus failToDecode(const Subject& subject, std::string_view message, const BookmarkInput& input);

    const ProgramSources& sources_;
    Output& output_;
};

} // namespace tolvane::cli
