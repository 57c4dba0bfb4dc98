#pragma once

#include "platform/services/Streams.h"
#include "verification/VerifyChecksums.h"

#include <string>

namespace tolvane::cli {

/// Shows on a terminal how much of a large file is read, in one line that is empty again at the end. Nothing
/// is shown elsewhere. `errors` outlives the function that is returned; the reading is never ended by it,
/// since the terminal's interrupt ends the program.
verification::Progress readingProgress(const std::string& name, platform::OutputStream& errors);

} // namespace tolvane::cli
