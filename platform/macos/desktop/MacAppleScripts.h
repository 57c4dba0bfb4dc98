#pragma once

#include "platform/services/AppleScript.h"

#include <memory>
#include <string_view>

namespace tolvane::platform {

/// Scripts that the system itself runs. Running one waits for it, and the system asks its user the first time
/// whether this program may control the one that the script names. Main thread only.
class MacAppleScripts final : public AppleScripts {
public:
    /// Null if the text is not UTF-8 or the system makes no script of it. It is compiled when it is run.
    std::unique_ptr<AppleScript> initWithSource(std::string_view source) override;
};

} // namespace tolvane::platform
