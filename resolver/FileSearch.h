#pragma once

#include "containers/FindBookmarks.h"
#include "platform/services/ExtendedAttributeCalls.h"
#include "platform/services/FileContents.h"
#include "platform/values/Error.h"

#include <mutex>
#include <optional>
#include <string>

namespace tolvane::resolver {

/// What searching files for bookmarks needs of the platform.
struct FileSearchSources {
    const platform::FileContents& contents;
    const platform::ExtendedAttributeCalls& extendedAttributes;
    /// In which names are compared; may be empty.
    const containers::ComposedText& composedText;
    /// Locked while much of a file is held (`containers::BeforeManyBytes`), where several threads search.
    std::mutex* manyBytes = nullptr;
};

/// The bookmarks in the contents of a file and then in its extended attributes; nothing if there are none and
/// the file is no container. `path` is absolute. Fails if the contents cannot be read.
///
/// May be called on any thread if the sources may.
platform::Result<std::optional<containers::FoundBookmarks>> searchFile(
    const std::string& path, const FileSearchSources& sources);

} // namespace tolvane::resolver
