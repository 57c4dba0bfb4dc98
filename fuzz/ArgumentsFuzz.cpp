// Parses bytes, divided by NULs, as the command line of the terminal program.
#include "cli/Arguments.h"
#include "fuzz/Fuzz.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace {

using namespace tolvane;
using Words = std::vector<std::string>;

/// What stands in the place of names and of values of options; the command's own words come first.
Words namesIn(std::span<const std::string> arguments) {
    Words names;
    bool namesOnly = false;
    bool isValue = false;
    for (const std::string& argument : arguments) {
        const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string::npos;
        if (namesOnly || isValue || !argument.starts_with('-') || argument == "-") {
            names.push_back(argument);
            isValue = false;
        } else if (argument == "--") {
            namesOnly = true;
        } else if (equals != std::string::npos) {
            names.push_back(argument.substr(equals + 1));
        } else {
            const bool explains = !names.empty() && names.front() == "attributes" && argument == "--explain";
            isValue = explains || argument == "--file" || argument == "--files0-from" || argument == "--jobs"
                      || argument == "--hex" || argument == "--value-file" || argument == "--at"
                      || argument == "--extract";
        }
    }
    return names;
}

/// Whether the words of a command are followed by as many names as it takes, and by nothing that may be an
/// option but one flag of the command's own: what must not be refused.
bool isInOrder(std::span<const std::string> arguments) {
    const auto dashes = std::ranges::find(arguments, "--");
    Words known(arguments.begin(), dashes);
    const Words names(dashes == arguments.end() ? dashes : dashes + 1, arguments.end());
    std::size_t fewest = 1;
    std::size_t most = 1;
    std::string flag = "--json";
    std::size_t commandWords = 2;
    if (!known.empty() && (known[0] == "report" || known[0] == "attributes")) {
        commandWords = 1;
        most = arguments.size();
    } else if (known.size() < 2 || known[0] != "bookmark") {
        return false;
    } else if (known[1] == "make") {
        flag = "--alias";
    } else if (known[1] == "read") {
        flag.clear();
    } else if (known[1] == "find") {
        most = arguments.size();
    } else if (known[1] == "show" || known[1] == "resolve") {
        fewest = 0;
    } else {
        return false;
    }
    known.erase(known.begin(), known.begin() + static_cast<std::ptrdiff_t>(commandWords));
    if (const auto given = std::ranges::find(known, flag); !flag.empty() && given != known.end()) {
        known.erase(given);
    }
    const std::size_t count = known.size() + names.size();
    const auto mayBeOption = [](const std::string& word) { return word.starts_with('-') && word != "-"; };
    return std::ranges::none_of(known, mayBeOption) && count >= fewest && count <= most;
}

/// Whether what was understood is the command words and all names, none lost, made up, or changed.
void requireAll(std::span<const std::string> arguments, Words understood) {
    Words names = namesIn(arguments);
    std::ranges::sort(names);
    std::ranges::sort(understood);
    fuzz::require(names == understood, "every name is understood once, to the byte");
}

void requireFew(const std::optional<std::size_t>& jobs) {
    fuzz::require(!jobs || (*jobs >= 1 && *jobs <= 1024), "threads are few");
}

void check(const cli::ReportRequest& request, std::span<const std::string> arguments) {
    fuzz::require(request.files0From.has_value() == request.names.empty(), "names come from one place");
    requireFew(request.jobs);
    Words understood = request.names;
    understood.emplace_back("report");
    if (request.files0From) {
        understood.push_back(*request.files0From);
    }
    if (request.jobs) {
        return; // its value is not kept as it was given
    }
    requireAll(arguments, understood);
    Words names = namesIn(arguments);
    const auto command = std::ranges::find(names, "report");
    names.erase(command);
    fuzz::require(request.files0From || names == request.names, "names keep their order");
}

void check(const cli::AttributesRequest& request, std::span<const std::string> arguments) {
    fuzz::require(request.files0From.has_value() == request.names.empty(), "names come from one place");
    Words understood = request.names;
    understood.emplace_back("attributes");
    if (request.files0From) {
        understood.push_back(*request.files0From);
    }
    requireFew(request.jobs);
    if (request.jobs) {
        return;
    }
    requireAll(arguments, understood);
}

void check(const cli::AttributesExplainRequest& request, std::span<const std::string> arguments) {
    fuzz::require(request.hex.has_value() != request.valueFile.has_value(), "a value comes from one place");
    requireAll(arguments, {"attributes", request.name, request.hex ? *request.hex : *request.valueFile});
}

void check(const cli::BookmarkMakeRequest& request, std::span<const std::string> arguments) {
    requireAll(arguments, {"bookmark", "make", request.file});
}

void check(const cli::BookmarkReadRequest& request, std::span<const std::string> arguments) {
    fuzz::require(!request.at || !request.extractFolder, "one bookmark is not every one");
    if (request.at) {
        return; // its value is not kept as it was given
    }
    Words understood{"bookmark", "read", request.aliasFile};
    if (request.extractFolder) {
        understood.push_back(*request.extractFolder);
    }
    requireAll(arguments, understood);
}

void checkOrigin(
    const cli::BookmarkOrigin& origin, const std::string& verb, std::span<const std::string> arguments) {
    fuzz::require(!origin.text || !origin.file, "a bookmark comes from one place");
    fuzz::require(!origin.at || origin.file, "a number is one in a file");
    if (origin.at) {
        return; // its value is not kept as it was given
    }
    Words understood{"bookmark", verb};
    for (const auto& given : {origin.text, origin.file}) {
        if (given) {
            understood.push_back(*given);
        }
    }
    requireAll(arguments, understood);
}

void check(const cli::BookmarkShowRequest& request, std::span<const std::string> arguments) {
    checkOrigin(request.origin, "show", arguments);
}

void check(const cli::BookmarkResolveRequest& request, std::span<const std::string> arguments) {
    fuzz::require(!request.json || !request.verbose, "the object stands alone");
    fuzz::require(
        !request.all || (request.origin.file && !request.origin.at && !request.verbose),
        "every bookmark is one of a file");
    checkOrigin(request.origin, "resolve", arguments);
}

void check(const cli::BookmarkFindRequest& request, std::span<const std::string> arguments) {
    fuzz::require(!request.allVolumes || request.recursive, "other volumes are below a folder");
    requireFew(request.jobs);
    if (request.jobs) {
        return;
    }
    Words understood = request.names;
    understood.insert(understood.end(), {"bookmark", "find"});
    requireAll(arguments, understood);
}

void check(const cli::Information& information, std::span<const std::string> arguments) {
    fuzz::require(information.text.contains("tolvane-cli"), "a text to print is about the program");
    fuzz::require(
        information.text.ends_with('\n') && !information.text.ends_with("\n\n"), "and ends its last line");
    const auto asks = [](const std::string& word) { return word.starts_with("-"); };
    fuzz::require(
        std::ranges::any_of(arguments, asks) && !isInOrder(arguments), "help is given when it is asked for");
}

void check(const cli::UsageError& error, std::span<const std::string> arguments) {
    fuzz::require(!error.message.empty(), "a refusal has its sentence");
    fuzz::require(!isInOrder(arguments), "what is in order is not refused");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Words arguments = fuzz::wordsIn(fuzz::textOf(data, size));
    const cli::Request request = cli::parseArguments(arguments);
    std::visit([&](const auto& asked) { check(asked, arguments); }, request);
    return 0;
}
