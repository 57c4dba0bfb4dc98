#pragma once

#include "app/desktop/DesktopSystem.h"

#include <functional>
#include <memory>
#include <string>

namespace tolvane::app {

/// Makes the system's object, which complains in sentences.
using SystemMaker =
    std::function<std::unique_ptr<DesktopSystem>(std::function<void(const std::string& sentence)> complain)>;

/// The desktop program, from its arguments to its exit status. It ends early, without a window, after a text
/// for standard output, after a usage error, when the request was handed over to an instance that runs
/// already, and where there is no display.
///
/// May end the process by itself instead of returning, once everything is closed.
int launch(int count, char** arguments, const SystemMaker& makeSystem);

} // namespace tolvane::app
