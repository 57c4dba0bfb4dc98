#include "app/LaunchArguments.h"

#include <optional>
#include <string_view>
#include <utility>

namespace tolvane::app {

namespace {

constexpr std::string_view help =
    "Usage: tolvane [OPTION] [FILE…]\n"
    "Shows the facts that a file system keeps about each file, in a window of its own.\n"
    "\n"
    "FILE is a name or a file:// URL; folders can be shown as well. Without a FILE the program offers to "
    "open\n"
    "one. When Tolvane is running already, the files are handed to it.\n"
    "\n"
    "  --help       prints this help and ends\n"
    "  --version    prints the version and ends\n"
    "  --resolver   opens the window that resolves bookmarks\n"
    "  --services   shows the name of each FILE in an alert and opens nothing; entries in the menus of file\n"
    "               managers call it\n"
    "  --await-bus  shows nothing until asked to over the session bus, which starts the program like this\n"
    "  --           what follows are names, even those that begin with a dash\n"
    "\n"
    "The same facts without a window: tolvane-cli report FILE…\n";

std::optional<FirstWindow> firstWindowOf(std::string_view option) {
    if (option == "--resolver") {
        return FirstWindow::resolver;
    }
    if (option == "--await-bus") {
        return FirstWindow::none;
    }
    return std::nullopt;
}

} // namespace

LaunchRequest readLaunchArguments(
    std::span<const std::string> arguments,
    const std::function<platform::Result<std::string>()>& currentDirectory) {
    OpenFiles files;
    std::optional<std::string> folder;
    std::string firstWindowOption;
    bool services = false;
    bool namesOnly = false;
    for (const std::string& argument : arguments) {
        if (!namesOnly && argument == "--") {
            namesOnly = true;
            continue;
        }
        if (!namesOnly && argument == "--help") {
            return PrintText{std::string(help)};
        }
        if (!namesOnly && argument == "--version") {
            return PrintText{"tolvane " TOLVANE_VERSION "\n"};
        }
        if (const auto window = firstWindowOf(argument); window && !namesOnly) {
            files.firstWindow = *window;
            firstWindowOption = argument;
            continue;
        }
        if (!namesOnly && argument == "--services") {
            services = true;
            continue;
        }
        if (!namesOnly && argument.size() > 1 && argument.starts_with('-')) {
            return UsageError{"there is no option " + argument};
        }
        if (argument.empty()) {
            return UsageError{"a file name is empty"};
        }
        if (!namesOnly && argument.starts_with("file://")) {
            auto url = platform::localFileURL(argument);
            if (!url) {
                return UsageError{argument + " is no URL of a file on this machine"};
            }
            files.urls.push_back(*std::move(url));
            continue;
        }
        if (!argument.starts_with('/') && !folder) {
            auto current = currentDirectory();
            if (!current) {
                return UsageError{
                    "the current folder is not known: " + current.error().localizedDescription()};
            }
            folder = *std::move(current);
        }
        files.urls.push_back(
            platform::URL::fileURLWithPath(platform::absolutePath(argument, folder.value_or("/"))));
    }
    if (!firstWindowOption.empty() && !files.urls.empty()) {
        return UsageError{"no file can be given beside " + firstWindowOption};
    }
    if (!firstWindowOption.empty() && services) {
        return UsageError{"--services cannot be given beside " + firstWindowOption};
    }
    if (services) {
        return ShowFileNames{std::move(files.urls)};
    }
    return files;
}

} // namespace tolvane::app
