#pragma once

#include "platform/Workspace.h"

namespace tolvane::platform {

/// The desktop as the toolkit reaches it. What opens an address is the user's choice there; it gets the URL's
/// text as it is, and is not waited for.
class QtWorkspace final : public Workspace {
public:
    /// False as well for a text that the toolkit takes for no URL.
    bool openURL(const URL& url) override;
};

} // namespace tolvane::platform
