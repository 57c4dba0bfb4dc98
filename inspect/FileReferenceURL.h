#pragma once

#include "platform/URL.h"
#include "platform/URLResources.h"

#include <optional>
#include <string>

namespace tolvane::inspect {

/// The URL that names a file by its identity on its volume instead of by its path: "file:///.file/id=", the
/// device number, a point and the file number, both unsigned decimal. It stays good when the file is moved or
/// renamed.
///
/// Nothing when the platform gives no resource identifier of exactly 16 bytes for the URL; why is not told.
std::optional<std::string> getFileReferenceURL(
    const platform::URL& url, const platform::URLResources& resources);

} // namespace tolvane::inspect
