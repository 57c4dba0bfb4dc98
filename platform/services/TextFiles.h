#pragma once

#include "platform/values/Error.h"
#include "platform/values/URL.h"

#include <string_view>

namespace tolvane::platform {

/// Writes the texts that the user saves. Besides these the programs write settings and extracted bookmarks
/// (NewFiles.h) only.
class TextFiles {
public:
    virtual ~TextFiles() = default;

    /// Writes the UTF-8 text to the file in place: without an auxiliary file or byte-order mark. The previous
    /// contents are lost even if writing fails. Fails with the system's error, also if the disk is full.
    virtual Result<void> writeInPlace(std::string_view text, const URL& url) const = 0;
};

} // namespace tolvane::platform
