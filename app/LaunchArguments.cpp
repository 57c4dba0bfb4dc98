#include "app/LaunchArguments.h"

#include "platform/commandline/CommandLine.h"

namespace tolvane::app {

namespace {

platform::Command program() {
    return {
        "tolvane [OPTION] [FILE…]",
        "Shows the facts that a file system keeps about each file, in a window of its own.\n"
        "\n"
        "FILE is a name or a file:// URL; folders can be shown as well. Without a FILE the program offers to "
        "open\n"
        "one. When Tolvane is running already, the files are handed to it.",
        {{"--help", "prints this help and ends"},
         {"--version", "prints the version and ends"},
         {"--resolver", "opens the window that resolves bookmarks"},
         {"--services",
          "shows the name of each FILE in an alert and opens nothing; entries in the menus of file\n"
          "managers call it"},
         {"--await-bus",
          "shows nothing until asked to over the session bus, which starts the program like this"},
         {"--", "what follows are names, even those that begin with a dash"}},
        "The same facts without a window: tolvane-cli report FILE…"};
}

constexpr std::string_view resolver = "--resolver";
constexpr std::string_view awaitBus = "--await-bus";
constexpr std::string_view services = "--services";

/// The URLs of the names, in order.
std::expected<std::vector<platform::URL>, UsageError> filesNamed(
    const platform::CommandLine& line,
    const std::function<platform::Result<std::string>()>& currentDirectory) {
    std::vector<platform::URL> urls;
    std::optional<std::string> folder;
    for (std::size_t i = 0; i < line.names.size(); ++i) {
        const std::string& name = line.names[i];
        if (name.empty()) {
            return std::unexpected(UsageError{"a file name is empty"});
        }
        if (i < line.namesBeforeDashes && name.starts_with("file://")) {
            auto url = platform::localFileURL(name);
            if (!url) {
                return std::unexpected(UsageError{name + " is no URL of a file on this machine"});
            }
            urls.push_back(*std::move(url));
            continue;
        }
        if (!name.starts_with('/') && !folder) {
            auto current = currentDirectory();
            if (!current) {
                return std::unexpected(
                    UsageError{"the current folder is not known: " + current.error().localizedDescription()});
            }
            folder = *std::move(current);
        }
        urls.push_back(platform::URL::fileURLWithPath(platform::absolutePath(name, folder.value_or("/"))));
    }
    return urls;
}

} // namespace

LaunchRequest readLaunchArguments(
    std::span<const std::string> arguments,
    const std::function<platform::Result<std::string>()>& currentDirectory) {
    const platform::Command table = program();
    const auto line = platform::parseCommandLine(table.rows, arguments);
    if (!line) {
        return UsageError{line.error()};
    }
    if (line->has("--help")) {
        return PrintText{platform::helpText(table)};
    }
    if (line->has("--version")) {
        return PrintText{"tolvane " TOLVANE_VERSION "\n"};
    }
    auto urls = filesNamed(*line, currentDirectory);
    if (!urls) {
        return urls.error();
    }
    for (const std::string_view alone : {resolver, awaitBus}) {
        for (const std::string_view other : {resolver, awaitBus, services}) {
            if (line->has(alone) && line->has(other) && alone != other) {
                return UsageError{std::string(other).append(" cannot be combined with ").append(alone)};
            }
        }
        if (line->has(alone) && !urls->empty()) {
            return UsageError{std::string("a file cannot be combined with ").append(alone)};
        }
    }
    if (line->has(resolver)) {
        return OpenResolver{};
    }
    if (line->has(awaitBus)) {
        return AwaitRequests{};
    }
    if (line->has(services)) {
        return ShowFileNames{*std::move(urls)};
    }
    return OpenFiles{*std::move(urls)};
}

} // namespace tolvane::app
