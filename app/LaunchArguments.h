#pragma once

#include "platform/Error.h"
#include "platform/URL.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace tolvane::app {

/// What the program shows first where no files are named.
enum class FirstWindow : std::uint8_t {
    usual,
    resolver,
    /// Nothing yet: whoever starts the program is about to tell it over the bus.
    none
};

/// The files to open, which may be none. They are none where something but the usual is to be shown.
struct OpenFiles {
    std::vector<platform::URL> urls;
    FirstWindow firstWindow = FirstWindow::usual;
};

/// The files whose names are to be shown, and nothing else of them; may be none. That is what the entries in
/// the menus of file managers ask for.
struct ShowFileNames {
    std::vector<platform::URL> urls;
};

/// A text to print instead of starting.
struct PrintText {
    std::string text;
};

/// Why the program cannot start: one sentence.
struct UsageError {
    std::string sentence;
};

using LaunchRequest = std::variant<OpenFiles, ShowFileNames, PrintText, UsageError>;

/// Reads the arguments after the program's name. Names are bytes; relative ones are taken in the current
/// folder, which is asked for only when there is one. "file://" URLs stand for the files they name. After
/// "--" everything is a name.
LaunchRequest readLaunchArguments(
    std::span<const std::string> arguments,
    const std::function<platform::Result<std::string>()>& currentDirectory);

} // namespace tolvane::app
