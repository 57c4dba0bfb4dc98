#pragma once

#include "platform/values/Error.h"

#include <string>

namespace tolvane::platform {

/// The absolute path of the process's current folder, as bytes and of any length. Fails with the system's
/// error, for instance when the folder was removed.
Result<std::string> currentDirectory();

} // namespace tolvane::platform
