#pragma once

#include "platform/freedesktop/FileManagerReveal.h"
#include "platform/services/AppleScript.h"

#include <memory>
#include <string_view>

namespace tolvane::platform {

/// Runs the one script with a counterpart on this desktop: the one that reveals a path. Running it asks the
/// file manager and does not wait; it fails if the path is not absolute or nothing is there. Scripts may
/// outlive this object.
class FreedesktopAppleScripts final : public AppleScripts {
public:
    explicit FreedesktopAppleScripts(std::shared_ptr<FileManagerReveal> fileManager)
        : fileManager_(std::move(fileManager)) {}

    /// Null for any other script, and for one that does not compile because of its path.
    std::unique_ptr<AppleScript> initWithSource(std::string_view source) override;

private:
    std::shared_ptr<FileManagerReveal> fileManager_;
};

} // namespace tolvane::platform
