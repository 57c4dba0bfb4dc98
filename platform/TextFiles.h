#pragma once

#include "platform/Error.h"
#include "platform/URL.h"

#include <string_view>

namespace tolvane::platform {

/// Writes the texts that the user saves: the only files that this program ever writes beside its own
/// settings.
class TextFiles {
public:
    virtual ~TextFiles() = default;

    /// Writes the text's bytes, which are UTF-8, to the file: in place, without an auxiliary file, with no
    /// byte-order mark. What the file held before is gone even when writing then fails; nothing is cleaned
    /// up. Fails with the system's error, also when the disk turns out to be full.
    virtual Result<void> writeInPlace(std::string_view text, const URL& url) const = 0;
};

} // namespace tolvane::platform
