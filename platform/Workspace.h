#pragma once

#include "platform/URL.h"

namespace tolvane::platform {

/// What the desktop does for a program beyond the program's own windows.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Has whatever program the user chose for such addresses open the URL. Does not wait for it; false when
    /// it was plain at once that nothing will.
    virtual bool openURL(const URL& url) = 0;
};

} // namespace tolvane::platform
