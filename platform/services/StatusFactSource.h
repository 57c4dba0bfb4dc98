#pragma once

#include "platform/values/Error.h"
#include "platform/values/StatusFacts.h"

#include <string>

namespace tolvane::platform {

/// Returns facts about items that are no part of the file manager's dictionary. The terminal program asks
/// from several threads at a time.
class StatusFactSource {
public:
    virtual ~StatusFactSource() = default;

    /// The facts of the item itself: a final symbolic link is not followed, and nothing is opened. Fails with
    /// the system's error if the item cannot be accessed. Paths are bytes.
    virtual Result<StatusFacts> factsOfItemAtPath(const std::string& path) const = 0;
};

} // namespace tolvane::platform
