#pragma once

#include "cli/Arguments.h"
#include "cli/NameWorkers.h"
#include "cli/Output.h"
#include "cli/Program.h"
#include "containers/FindBookmarks.h"

#include <mutex>
#include <string>
#include <string_view>

namespace tolvane::cli {

/// Finds the bookmarks in files and prints a line or a JSON object for each.
///
/// A line has, divided by tabs: the file, the finding's number in it, its kind, where it is, the path or URL,
/// the volume, when the item was created, what differs from it beside it, and the container's flags for it in
/// words. Every character that could end a line or a column is escaped. Files that are no containers are
/// passed over; of what looks like one and is broken standard error says where.
class FindCommand {
public:
    /// Both references outlive the command.
    FindCommand(const ProgramSources& sources, Output& output)
        : sources_(sources)
        , currentFolder_(sources.currentFolder())
        , output_(output) {}

    /// Searches with as many threads as were asked for (NameWorkers.h).
    ExitStatus run(const BookmarkFindRequest& request);

private:
    void search(const std::string& name, const BookmarkFindRequest& request, NameResults& results);

    const ProgramSources& sources_;
    platform::Result<std::string> currentFolder_;
    Output& output_;
    std::mutex manyBytes_; ///< Locked while much of a file is held.
};

} // namespace tolvane::cli
