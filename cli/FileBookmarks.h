#pragma once

#include "cli/Program.h"
#include "containers/FindBookmarks.h"

#include <cstddef>
#include <optional>
#include <string>

namespace tolvane::cli {

/// The bookmarks in the contents of a file and then in its extended attributes; nothing if there are none and
/// the file is no container. `path` is absolute. Fails if the contents cannot be read.
platform::Result<std::optional<containers::FoundBookmarks>> searchFile(
    const std::string& path, const ProgramSources& sources);

/// The bookmarks in a file, with the numbers that 'bookmark find' prints. Fails with a sentence if the file
/// cannot be read or contains none.
platform::Result<containers::FoundBookmarks> bookmarksInFile(
    const std::string& name, const ProgramSources& sources);

/// The bytes of the bookmark or alias record with a number, as they are stored. Fails with a sentence if
/// there is none, and for addresses and origins, which have no bytes.
platform::Result<platform::Data> bookmarkNumbered(const containers::FoundBookmarks& found, std::size_t index);

} // namespace tolvane::cli
