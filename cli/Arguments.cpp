#include "cli/Arguments.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

namespace tolvane::cli {

namespace {

/// Stands for a file name while the option parser is at work. The parser reads meanings into some names
/// ("++",
/// "[a,b]", the names of commands), so it is shown numbers instead.
constexpr std::string_view placeholder = "name#";

/// The arguments with every name replaced by a placeholder: what does not start with a dash, a lone dash, and
/// all that follows "--", which is left out then. The first word is the command and stays.
std::vector<std::string> withoutNames(std::span<const std::string> arguments) {
    std::vector<std::string> shown;
    bool commandSeen = false;
    bool namesOnly = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const bool isName = namesOnly || !argument.starts_with('-') || argument == "-";
        if (!namesOnly && argument == "--") {
            namesOnly = true;
        } else if (isName && commandSeen) {
            shown.push_back(std::string(placeholder) + std::to_string(i));
        } else {
            commandSeen = commandSeen || isName;
            shown.push_back(argument);
        }
    }
    return shown;
}

/// The name that a placeholder stands for; any other text is itself, as given to an option behind "=".
std::string named(const std::string& text, std::span<const std::string> arguments) {
    if (!text.starts_with(placeholder)) {
        return text;
    }
    std::size_t index = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, fault] = std::from_chars(text.data() + placeholder.size(), end, index);
    return fault == std::errc() && stop == end && index < arguments.size() ? arguments[index] : text;
}

/// A message of the parser with the names put back in.
std::string withNames(std::string message, std::span<const std::string> arguments) {
    for (std::size_t i = arguments.size(); i-- > 0;) {
        const std::string shown = std::string(placeholder) + std::to_string(i);
        const std::size_t place = message.find(shown);
        if (place != std::string::npos) {
            message.replace(place, shown.size(), arguments[i]);
        }
    }
    return message;
}

Request checked(ReportRequest request) {
    if (request.files0From && !request.names.empty()) {
        return UsageError{
            "report: --files0-from takes the place of file names; " + request.names.front()
            + " cannot be given beside it"};
    }
    if (!request.files0From && request.names.empty()) {
        return UsageError{"report: no file is named"};
    }
    return request;
}

} // namespace

Request parseArguments(std::span<const std::string> arguments) {
    CLI::App program("Shows the facts that a file system keeps about files.", "tolvane-cli");
    program.set_version_flag("--version", "tolvane-cli " TOLVANE_VERSION);
    program.require_subcommand(1);
    program.footer(
        "Exit status: 0 when every file was reported, 1 when one could not be, 2 for wrong usage.");

    ReportRequest request;
    std::string files0From;
    CLI::App* report = program.add_subcommand("report", "Prints the details report of each file");
    report
        ->add_option("FILE", request.names, "A file, folder or any other item; it is looked at, never opened")
        ->type_name("");
    CLI::Option* fromOption = report->add_option(
        "--files0-from", files0From, "Takes the names, each ended by a NUL, from F ('-': standard input)");
    fromOption->type_name("F");
    report->add_flag(
        "--json", request.json, "Prints one JSON object a line: the field texts, and typed facts");
    report->footer("A name that starts with a dash is given after '--'.");

    const auto command =
        std::ranges::find_if_not(arguments, [](const auto& text) { return text.starts_with('-'); });
    if (command != arguments.end() && *command != report->get_name()) {
        return UsageError{"there is no command " + *command};
    }
    std::vector<std::string> shown = withoutNames(arguments);
    std::ranges::reverse(shown); // The order in which the parser takes them.
    try {
        program.parse(std::move(shown));
    } catch (const CLI::CallForHelp&) {
        const auto chosen = program.get_subcommands();
        std::string help = chosen.empty() ? program.help() : chosen.front()->help(program.get_name());
        help.erase(help.find_last_not_of('\n') + 1);
        return Information{help + "\n"};
    } catch (const CLI::CallForVersion& version) {
        return Information{std::string(version.what()) + "\n"};
    } catch (const CLI::RequiredError&) {
        return UsageError{
            arguments.empty() ? "no command is given" : "no command is given, only " + arguments.front()};
    } catch (const CLI::ParseError& fault) {
        return UsageError{withNames(fault.what(), arguments)};
    }

    std::ranges::transform(request.names, request.names.begin(), [&](const std::string& text) {
        return named(text, arguments);
    });
    if (fromOption->count() > 0) {
        request.files0From = named(files0From, arguments);
    }
    return checked(std::move(request));
}

} // namespace tolvane::cli
