#pragma once

#include "platform/services/TextFiles.h"

namespace tolvane::platform {

/// Writes texts in place: opens, truncates, writes and closes the file; each can fail.
///
/// A FIFO without a reader fails (ENXIO) instead of blocking. A pipe that loses its reader ends the process
/// unless broken pipes are ignored (FileDescriptorStreams.h).
class PosixTextFiles final : public TextFiles {
public:
    /// A URL that is no file's fails with EINVAL.
    Result<void> writeInPlace(std::string_view text, const URL& url) const override;
};

} // namespace tolvane::platform
