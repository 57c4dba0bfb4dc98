// Parses bytes, separated by NULs, as the command line of the desktop program.
#include "app/LaunchArguments.h"
#include "fuzz/Fuzz.h"
#include "platform/values/URL.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace {

using namespace tolvane;
using Words = std::vector<std::string>;
using Folder = platform::Result<std::string>;

/// Whether this option occurs before "--".
bool isGiven(std::span<const std::string> arguments, std::string_view option) {
    const auto end = std::ranges::find(arguments, "--");
    return std::find(arguments.begin(), end, option) != end;
}

/// Whether there are only possible names of local files and optionally "--services", or one other option
/// alone. That must not be refused.
bool isInOrder(std::span<const std::string> arguments) {
    if (arguments.size() == 1 && (arguments[0] == "--resolver" || arguments[0] == "--await-bus")) {
        return true;
    }
    const auto dashes = std::ranges::find(arguments, "--");
    const auto isInPlace = [](const std::string& word) {
        if (word.starts_with("file://")) {
            return platform::localFileURL(word).has_value();
        }
        return word == "--services" || word == "-" || (!word.empty() && !word.starts_with('-'));
    };
    return std::all_of(arguments.begin(), dashes, isInPlace)
           && std::find(dashes, arguments.end(), std::string()) == arguments.end();
}

void checkFiles(std::span<const platform::URL> urls, std::span<const std::string> arguments) {
    std::vector<std::string> paths;
    bool namesOnly = false;
    for (const std::string& argument : arguments) {
        if (!namesOnly && argument.starts_with("file://")) {
            const auto url = platform::localFileURL(argument);
            fuzz::require(url.has_value(), "a URL of a file elsewhere is refused");
            paths.push_back(url->path());
        } else if (namesOnly || !argument.starts_with('-') || argument == "-") {
            paths.push_back(platform::absolutePath(argument, "/some/folder"));
        }
        namesOnly = namesOnly || argument == "--";
    }
    fuzz::require(
        std::ranges::equal(urls, paths, {}, &platform::URL::path), "every name becomes a file, in order");
    for (const platform::URL& url : urls) {
        fuzz::require(url.fileSystemRepresentation().has_value(), "every file can be asked for");
    }
}

void check(const app::OpenFiles& files, std::span<const std::string> arguments) {
    checkFiles(files.urls, arguments);
    fuzz::require(
        !isGiven(arguments, "--resolver") && !isGiven(arguments, "--await-bus"),
        "an option for another window is not ignored");
    fuzz::require(!isGiven(arguments, "--services"), "the services are no opening");
}

void check(const app::OpenResolver& /*request*/, std::span<const std::string> arguments) {
    checkFiles({}, arguments);
    fuzz::require(isGiven(arguments, "--resolver"), "the resolver is opened on request");
}

void check(const app::AwaitRequests& /*request*/, std::span<const std::string> arguments) {
    checkFiles({}, arguments);
    fuzz::require(isGiven(arguments, "--await-bus"), "requests are awaited on request");
}

void check(const app::ShowFileNames& names, std::span<const std::string> arguments) {
    checkFiles(names.urls, arguments);
    fuzz::require(isGiven(arguments, "--services"), "names are shown when that is asked for");
}

void check(const app::PrintText& print, std::span<const std::string> arguments) {
    fuzz::require(print.text.ends_with('\n'), "a text to print ends its last line");
    fuzz::require(
        isGiven(arguments, "--help") || isGiven(arguments, "--version"), "a text is printed on demand");
}

void check(const app::UsageError& error, std::span<const std::string> arguments) {
    fuzz::require(!error.sentence.empty(), "a refusal has its sentence");
    fuzz::require(!isInOrder(arguments), "what is in order is not refused");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Words arguments = fuzz::wordsIn(fuzz::textOf(data, size));
    std::size_t asked = 0;
    const auto request = app::readLaunchArguments(arguments, [&]() -> Folder {
        ++asked;
        return "/some/folder";
    });
    fuzz::require(asked <= 1, "the folder is asked for once");
    std::visit([&](const auto& kind) { check(kind, arguments); }, request);

    const auto withoutFolder = app::readLaunchArguments(
        arguments, []() -> Folder { return std::unexpected(platform::posixError(ENOENT)); });
    const bool isRefused = std::holds_alternative<app::UsageError>(withoutFolder);
    fuzz::require(
        isRefused == (asked > 0 || std::holds_alternative<app::UsageError>(request)),
        "without a folder what is taken in it is refused, and nothing else");
    fuzz::require(
        asked > 0 || request.index() == withoutFolder.index(), "what takes no folder is understood without");
    return 0;
}
