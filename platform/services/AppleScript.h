#pragma once

#include "platform/values/Error.h"

#include <memory>
#include <string_view>

namespace tolvane::platform {

/// A script that can be run.
class AppleScript {
public:
    virtual ~AppleScript() = default;

    /// Compiles and runs the script; fails if either does.
    virtual Result<void> executeAndReturnError() = 0;
};

/// Makes scripts.
class AppleScripts {
public:
    virtual ~AppleScripts() = default;

    /// Makes a script from this text, in which paths are raw bytes. Null if that is not possible.
    virtual std::unique_ptr<AppleScript> initWithSource(std::string_view source) = 0;
};

} // namespace tolvane::platform
