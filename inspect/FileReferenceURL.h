#pragma once

#include "platform/services/URLResources.h"
#include "platform/values/URL.h"

#include <optional>
#include <string>

namespace tolvane::inspect {

/// The URL that identifies a file by its numbers instead of its path: "file:///.file/id=", the device number,
/// a point and the file number, both unsigned decimal. It stays valid when the file is moved or renamed on
/// its volume.
///
/// Nothing unless the platform returns a resource identifier of exactly 16 bytes.
std::optional<std::string> getFileReferenceURL(
    const platform::URL& url, const platform::URLResources& resources);

} // namespace tolvane::inspect
