#pragma once

#include "platform/services/Workspace.h"

namespace tolvane::platform {

/// The desktop as Qt reaches it. The program that opens an address is the user's choice there; it gets the
/// URL's text as it is, and is not waited for.
class QtWorkspace final : public Workspace {
public:
    /// False as well for a text that is not a URL for Qt.
    bool openURL(const URL& url) override;
};

} // namespace tolvane::platform
