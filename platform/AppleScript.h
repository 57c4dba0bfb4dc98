#pragma once

#include "platform/Error.h"

#include <memory>
#include <string_view>

namespace tolvane::platform {

/// A script that can be run.
class AppleScript {
public:
    virtual ~AppleScript() = default;

    /// Compiles and runs the script. Fails when either does.
    virtual Result<void> executeAndReturnError() = 0;
};

/// Makes scripts.
class AppleScripts {
public:
    virtual ~AppleScripts() = default;

    /// A script of this text, which is bytes: the paths in it are as they are on disk. Null when there can be
    /// none.
    virtual std::unique_ptr<AppleScript> initWithSource(std::string_view source) = 0;
};

} // namespace tolvane::platform
