#pragma once

#include "platform/AppleScript.h"
#include "platform/freedesktop/FileManagerReveal.h"

#include <memory>
#include <string_view>

namespace tolvane::platform {

/// Runs the one script that this desktop has a counterpart for: the one that reveals a path. Running it asks
/// the file manager and does not wait; it fails, without a word to the user, when the path is not absolute or
/// nothing is there. Scripts may outlive the object that made them.
class FreedesktopAppleScripts final : public AppleScripts {
public:
    explicit FreedesktopAppleScripts(std::shared_ptr<FileManagerReveal> fileManager);

    /// Null for any other script, and for one that does not compile because of the path in it.
    std::unique_ptr<AppleScript> initWithSource(std::string_view source) override;

private:
    std::shared_ptr<FileManagerReveal> fileManager_;
};

} // namespace tolvane::platform
