#pragma once

#include "app/desktop/DesktopSystem.h"

#include <functional>
#include <memory>
#include <string>

namespace tolvane::app {

/// The desktop program's system on Linux: files from the kernel, all else from the session bus, through which
/// a login has one instance.
std::unique_ptr<DesktopSystem> desktopSystem(std::function<void(const std::string& sentence)> complain);

} // namespace tolvane::app
