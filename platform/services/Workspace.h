#pragma once

#include "platform/values/URL.h"

namespace tolvane::platform {

/// Services of the desktop outside the program's own windows.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Opens the URL with the user's default program, without waiting; false if it is certain at once that
    /// this fails.
    virtual bool openURL(const URL& url) = 0;
};

} // namespace tolvane::platform
