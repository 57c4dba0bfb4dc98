// Writes texts in place: the file is opened, emptied, written and closed, and each of these can fail.
//
// A FIFO that nobody reads is refused (ENXIO) instead of being waited for. Whatever is written into a pipe
// that loses its reader ends the process unless broken pipes are ignored (LinuxStreams.h).
#pragma once

#include "platform/TextFiles.h"

#include <chrono>

namespace tolvane::platform {

class LinuxTextFiles final : public TextFiles {
public:
    /// How long a text may take to be taken by whoever is at the other end of a pipe or terminal. The windows
    /// stand still meanwhile.
    static constexpr std::chrono::milliseconds usualTimeLimit{2'000};

    explicit LinuxTextFiles(std::chrono::milliseconds timeLimit = usualTimeLimit) : timeLimit_(timeLimit) {}

    /// A URL that is no file's fails with EINVAL. The other end of a pipe or terminal that does not take all
    /// within the time limit makes it fail with ETIMEDOUT; what it took by then is gone.
    Result<void> writeInPlace(std::string_view text, const URL& url) const override;

private:
    std::chrono::milliseconds timeLimit_;
};

} // namespace tolvane::platform
