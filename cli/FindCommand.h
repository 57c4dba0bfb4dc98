#pragma once

#include "cli/Arguments.h"
#include "cli/Output.h"
#include "cli/Program.h"
#include "containers/FindBookmarks.h"

#include <string>
#include <string_view>

namespace tolvane::cli {

/// Finds the bookmarks in files and prints a line or a JSON object for each.
///
/// A line has, divided by tabs: the file, the finding's number in it, its kind, where it is, the path or URL,
/// the volume, when the item was created, and what differs from it beside it. Every character that could end
/// a line or a column is escaped. Files that are no containers are passed over; of what looks like one and is
/// broken standard error says where.
class FindCommand {
public:
    /// Both references outlive the command.
    FindCommand(const ProgramSources& sources, Output& output) : sources_(sources), output_(output) {}

    ExitStatus run(const BookmarkFindRequest& request);

private:
    void search(const std::string& name, bool recursive);
    void print(const std::string& name, const containers::FoundBookmarks& found);
    void complainOf(const std::string& name, std::string_view reason);

    const ProgramSources& sources_;
    Output& output_;
    bool json_ = false;
    ExitStatus status_ = ExitStatus::success;
};

/// The contents of a file if it may be a container; nothing if it is certainly none. `path` is absolute.
platform::Result<std::optional<platform::Data>> containerContents(
    const std::string& path, const platform::FileContents& contents);

} // namespace tolvane::cli
