#pragma once

#include "app/desktop/DesktopSystem.h"

#include <functional>
#include <memory>
#include <string>

namespace tolvane::app {

/// The desktop program's system on macOS, which itself keeps an application at one instance. There is nothing
/// to complain of.
std::unique_ptr<DesktopSystem> desktopSystem(std::function<void(const std::string& sentence)> complain);

} // namespace tolvane::app
