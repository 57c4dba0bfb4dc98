#pragma once

#include "cli/Program.h"
#include "containers/FindBookmarks.h"
#include "resolver/FileSearch.h"

#include <cstddef>
#include <string>

namespace tolvane::cli {

/// What searching a file needs of these.
resolver::FileSearchSources fileSearchSources(const ProgramSources& sources);

/// The bookmarks in a file, with the numbers that 'bookmark find' prints. Fails with a sentence if the file
/// cannot be read or contains none.
platform::Result<containers::FoundBookmarks> bookmarksInFile(
    const std::string& name, const ProgramSources& sources);

/// The bytes of the bookmark or alias record with a number, as they are stored. Fails with a sentence if
/// there is none, and for addresses and origins, which have no bytes.
platform::Result<platform::Data> bookmarkNumbered(const containers::FoundBookmarks& found, std::size_t index);

} // namespace tolvane::cli
