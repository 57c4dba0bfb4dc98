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

/// The arguments as the parser is shown them, and the names that its placeholders stand for, by their
/// numbers.
struct Disguise {
    std::vector<std::string> shown;
    std::vector<std::string> names;

    std::string placeholderFor(std::string_view name) {
        names.emplace_back(name);
        return std::string(placeholder) + std::to_string(names.size() - 1);
    }
};

/// Puts a placeholder for every name: for what does not start with a dash, a lone dash, what stands behind
/// the
/// "=" of a long option, and all that follows "--", which is left out then. The first word is the command and
/// stays.
Disguise disguised(std::span<const std::string> arguments) {
    Disguise disguise;
    bool commandSeen = false;
    bool namesOnly = false;
    for (const std::string& argument : arguments) {
        const bool isName = namesOnly || !argument.starts_with('-') || argument == "-";
        const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string::npos;
        if (!namesOnly && argument == "--") {
            namesOnly = true;
        } else if (isName && commandSeen) {
            disguise.shown.push_back(disguise.placeholderFor(argument));
        } else if (!isName && equals != std::string::npos) {
            const std::string_view value = std::string_view(argument).substr(equals + 1);
            disguise.shown.push_back(argument.substr(0, equals + 1) + disguise.placeholderFor(value));
        } else {
            commandSeen = commandSeen || isName;
            disguise.shown.push_back(argument);
        }
    }
    return disguise;
}

/// The name that a placeholder stands for.
std::string named(std::string_view text, const Disguise& disguise) {
    if (!text.starts_with(placeholder)) {
        return std::string(text);
    }
    std::size_t number = 0;
    text.remove_prefix(placeholder.size());
    std::from_chars(text.data(), text.data() + text.size(), number);
    return disguise.names.at(number);
}

/// A message of the parser with the names put back in.
std::string withNames(std::string message, const Disguise& disguise) {
    for (std::size_t i = disguise.names.size(); i-- > 0;) {
        const std::string shown = std::string(placeholder) + std::to_string(i);
        const std::size_t place = message.find(shown);
        if (place != std::string::npos) {
            message.replace(place, shown.size(), disguise.names[i]);
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
    Disguise disguise = disguised(arguments);
    std::ranges::reverse(disguise.shown); // The order in which the parser takes them.
    try {
        program.parse(disguise.shown);
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
        return UsageError{withNames(fault.what(), disguise)};
    }

    if (fromOption->count() > 0) {
        request.files0From = named(files0From, disguise);
    }
    for (std::string& name : request.names) {
        // The parser takes a number below zero for a name; one with a dash comes after "--", though.
        if (!name.starts_with(placeholder)) {
            return UsageError{"The following argument was not expected: " + name};
        }
        name = named(name, disguise);
    }
    return checked(std::move(request));
}

} // namespace tolvane::cli
