#pragma once

#include "cli/Arguments.h"
#include "cli/Output.h"
#include "cli/Program.h"
#include "containers/FindBookmarks.h"
#include "resolver/ResolveBookmark.h"
#include "resolver/StoredAndFound.h"

#include <cstddef>
#include <string>

namespace tolvane::cli {

/// Resolves every bookmark in a file, and prints a line or a JSON object for each and a summary to standard
/// error.
///
/// A line has, divided by tabs: the number, "found", "stale" or "not found", and the path or the reason, with
/// every character escaped that could end a line or a column. On a terminal standard error shows how far it
/// is. Addresses and origins are left out.
class ResolveAllCommand {
public:
    /// Both references outlive the command.
    ResolveAllCommand(const ProgramSources& sources, Output& output) : sources_(sources), output_(output) {}

    /// Fails if a bookmark was not found.
    ExitStatus run(const std::string& file, bool asJson);

private:
    void resolve(const std::string& file, std::size_t index, const containers::Finding& finding, bool asJson);
    void showProgress(const std::string& text);

    const ProgramSources& sources_;
    Output& output_;
    std::size_t shownLength_ = 0; ///< Of the progress on the terminal.
    std::size_t found_ = 0;
    std::size_t stale_ = 0;
    std::size_t notFound_ = 0;
};

/// What the bookmark stores beside the facts of the item that it led to, which is looked at once more.
resolver::StoredAndFound comparedWithItem(
    std::span<const std::byte> bookmark,
    const platform::ResolvedBookmark& resolved,
    const platform::Bookmarks& bookmarks);

/// Why resolving returned no path; empty if it returned one.
std::string reasonOfFailure(const resolver::BookmarkResolution& resolution);

} // namespace tolvane::cli
