#pragma once

#include "platform/services/TextFiles.h"

namespace tolvane::platform {

/// Writes texts in place: the file is opened, emptied, written and closed, and each of these can fail.
///
/// A FIFO without a reader is refused (ENXIO) instead of being waited for; one with a reader is written at
/// the reader's pace. Writing into a pipe that loses its reader ends the process unless broken pipes are
/// ignored (LinuxStreams.h).
class LinuxTextFiles final : public TextFiles {
public:
    /// A URL that is no file's fails with EINVAL.
    Result<void> writeInPlace(std::string_view text, const URL& url) const override;
};

} // namespace tolvane::platform
