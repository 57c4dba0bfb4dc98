#pragma once

#include "containers/FindBookmarks.h"
#include "platform/services/FileContents.h"
#include "platform/values/Error.h"
#include "platform/values/Value.h"

#include <optional>
#include <string>

namespace tolvane::containers {

/// The contents of a file if it may be a container; nothing if it is certainly none. Fails if the path does
/// not lead to a regular file, or to one that is too long (`mostContainerBytes`). `path` is absolute bytes.
/// May be called on any thread.
platform::Result<std::optional<platform::Data>> containerContents(
    const std::string& path,
    const platform::FileContents& contents,
    const BeforeManyBytes& beforeManyBytes = {});

} // namespace tolvane::containers
