// Writes texts in place: the file is opened, emptied, written and closed, and each of these can fail.
//
// A FIFO that nobody reads is refused (ENXIO) instead of being waited for. Whatever is written into a pipe
// that loses its reader ends the process unless broken pipes are ignored (LinuxStreams.h).
#pragma once

#include "platform/TextFiles.h"

namespace tolvane::platform {

class LinuxTextFiles final : public TextFiles {
public:
    /// A URL that is no file's fails with EINVAL.
    Result<void> writeInPlace(std::string_view text, const URL& url) const override;
};

} // namespace tolvane::platform
