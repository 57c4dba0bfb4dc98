#pragma once

#include "platform/values/Error.h"
#include "platform/values/URL.h"

#include <functional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace tolvane::app {

/// The files to open; without any, the program shows what it shows at a usual start.
struct OpenFiles {
    std::vector<platform::URL> urls;
};

/// The window that resolves bookmarks, and no files.
struct OpenResolver {};

/// Nothing to show until a request comes over the session bus, which started the program.
struct AwaitRequests {};

/// The files whose names, and nothing else, are shown, for the entries in file managers; may be empty.
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

using LaunchRequest =
    std::variant<OpenFiles, OpenResolver, AwaitRequests, ShowFileNames, PrintText, UsageError>;

/// Parses the arguments after the program's name. Names are bytes; the current folder is asked for only if
/// one is relative. "file://" URLs name files. After "--" everything is a name.
LaunchRequest readLaunchArguments(
    std::span<const std::string> arguments,
    const std::function<platform::Result<std::string>()>& currentDirectory);

} // namespace tolvane::app
