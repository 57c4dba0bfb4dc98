#include "cli/Arguments.h"

#include "platform/commandline/CommandLine.h"

#include <algorithm>
#include <charconv>
#include <expected>
#include <iterator>
#include <string_view>
#include <utility>

namespace tolvane::cli {

namespace {

using platform::CommandLine;
using platform::HelpRow;

constexpr HelpRow helpRow{"-h, --help", "Prints this help and exits"};
constexpr HelpRow textRow{"TEXT", "The bookmark in base-64; spaces, line feeds and tabs are ignored"};
constexpr HelpRow fileRow{"--file F", "Reads the bookmark from F: an alias file, bookmark data, or base-64"};
constexpr HelpRow atRow{
    "--at INDEX", "The number of the bookmark in F, which can be any file, as 'find' prints it"};
constexpr HelpRow jobsRow{
    "--jobs N", "Works with N threads, 1 to 1024; by default with one for each processor"};
constexpr std::size_t mostJobs = 1024;
constexpr std::string_view dashes = "A name that starts with a dash is given after '--'.";
constexpr std::string_view origins =
    "Without TEXT and --file the bookmark is read from standard input, in any of these forms. A "
    "text that starts with a dash is given after '--'.";

/// The name that a command takes one of, if any.
std::expected<std::optional<std::string>, UsageError> onlyName(CommandLine& line) {
    if (line.names.size() > 1) {
        return std::unexpected(UsageError{line.names[1] + " is one argument too many"});
    }
    return line.names.empty() ? std::nullopt : std::optional(std::move(line.names[0]));
}

/// The number after "--at".
std::expected<std::optional<std::size_t>, UsageError> indexOf(const CommandLine& line) {
    const auto text = line.valueOf("--at");
    if (!text) {
        return std::nullopt;
    }
    std::size_t index = 0;
    const char* const end = text->data() + text->size();
    const auto [rest, fault] = std::from_chars(text->data(), end, index);
    if (fault != std::errc() || rest != end) {
        return std::unexpected(UsageError{"--at needs a number from 0 on; this was given: " + *text});
    }
    return index;
}

std::expected<BookmarkOrigin, UsageError> originOf(CommandLine& line) {
    auto text = onlyName(line);
    if (!text) {
        return std::unexpected(std::move(text.error()));
    }
    if (*text && line.has("--file")) {
        return std::unexpected(UsageError{"a text cannot be combined with --file"});
    }
    const auto at = indexOf(line);
    if (!at) {
        return std::unexpected(at.error());
    }
    if (*at && !line.has("--file")) {
        return std::unexpected(UsageError{"--at needs --file"});
    }
    return BookmarkOrigin{*std::move(text), line.valueOf("--file"), *at};
}

/// For commands that take many names.
std::expected<std::optional<std::size_t>, UsageError> jobsOf(const CommandLine& line) {
    const auto text = line.valueOf("--jobs");
    if (!text) {
        return std::nullopt;
    }
    std::size_t jobs = 0;
    const char* const end = text->data() + text->size();
    const auto [rest, fault] = std::from_chars(text->data(), end, jobs);
    if (fault != std::errc() || rest != end || jobs < 1 || jobs > mostJobs) {
        return std::unexpected(UsageError{"--jobs needs a number from 1 to 1024; this was given: " + *text});
    }
    return jobs;
}

/// What is wrong with the names of a request for several items, if anything.
template <typename Asked>
std::optional<UsageError> errorInNames(const Asked& request) {
    if (request.files0From && !request.names.empty()) {
        return UsageError{request.names.front() + " cannot be combined with --files0-from"};
    }
    if (!request.files0From && request.names.empty()) {
        return UsageError{"no file is named"};
    }
    return std::nullopt;
}

Request reportRequest(CommandLine& line) {
    const auto jobs = jobsOf(line);
    if (!jobs) {
        return jobs.error();
    }
    ReportRequest request{
        std::move(line.names), line.valueOf("--files0-from"), line.has("--json"), line.has("--explain"),
        *jobs};
    if (request.explain && request.json) {
        return UsageError{"--explain cannot be combined with --json; 'attributes --json' prints the words"};
    }
    if (const auto error = errorInNames(request)) {
        return *error;
    }
    return request;
}

Request attributesRequest(CommandLine& line) {
    if (!line.has("--explain")) {
        for (const std::string_view option : {"--hex", "--value-file"}) {
            if (line.has(option)) {
                return UsageError{std::string(option) + " needs --explain with the attribute's name"};
            }
        }
        const auto jobs = jobsOf(line);
        if (!jobs) {
            return jobs.error();
        }
        AttributesRequest request{
            std::move(line.names), line.valueOf("--files0-from"), line.has("--json"), *jobs,
            line.has("--verify")};
        if (const auto error = errorInNames(request)) {
            return *error;
        }
        return request;
    }
    if (!line.names.empty() || line.has("--files0-from")) {
        return UsageError{"--explain cannot be combined with files"};
    }
    if (line.has("--jobs")) {
        return UsageError{"--explain cannot be combined with --jobs"};
    }
    if (line.has("--verify")) {
        return UsageError{"--explain cannot be combined with --verify"};
    }
    if (line.has("--hex") == line.has("--value-file")) {
        return UsageError{"--explain needs the value: either --hex or --value-file"};
    }
    return AttributesExplainRequest{
        *line.valueOf("--explain"), line.valueOf("--hex"), line.valueOf("--value-file"), line.has("--json")};
}

Request makeRequest(CommandLine& line) {
    auto name = onlyName(line);
    if (!name || !*name) {
        return name ? UsageError{"no file is named"} : name.error();
    }
    return BookmarkMakeRequest{**std::move(name), line.has("--alias")};
}

Request readRequest(CommandLine& line) {
    auto name = onlyName(line);
    if (!name || !*name) {
        return name ? UsageError{"no alias file is named"} : name.error();
    }
    const auto at = indexOf(line);
    if (!at) {
        return at.error();
    }
    if (*at && line.has("--extract")) {
        return UsageError{"--at cannot be combined with --extract"};
    }
    return BookmarkReadRequest{**std::move(name), *at, line.valueOf("--extract")};
}

Request showRequest(CommandLine& line) {
    auto origin = originOf(line);
    if (!origin) {
        return origin.error();
    }
    return BookmarkShowRequest{*std::move(origin), line.has("--json"), line.has("--salvage")};
}

Request resolveRequest(CommandLine& line) {
    auto origin = originOf(line);
    if (!origin) {
        return origin.error();
    }
    if (line.has("--verbose") && line.has("--json")) {
        return UsageError{"--verbose cannot be combined with --json"};
    }
    if (line.has("--all") && !origin->file) {
        return UsageError{"--all needs --file"};
    }
    for (const std::string_view option : {"--at", "--verbose"}) {
        if (line.has("--all") && line.has(option)) {
            return UsageError{"--all cannot be combined with " + std::string(option)};
        }
    }
    return BookmarkResolveRequest{
        *std::move(origin), line.has("--json"), line.has("--verbose"), line.has("--all")};
}

Request findRequest(CommandLine& line) {
    if (line.names.empty()) {
        return UsageError{"no file is named"};
    }
    if (line.has("--all-volumes") && !line.has("--recursive")) {
        return UsageError{"--all-volumes needs --recursive"};
    }
    const auto jobs = jobsOf(line);
    if (!jobs) {
        return jobs.error();
    }
    return BookmarkFindRequest{
        std::move(line.names), line.has("--recursive"), line.has("--all-volumes"), line.has("--json"), *jobs};
}

/// The program, one of its commands, or one of their verbs.
struct Verb {
    std::string_view name;
    /// The rows of its own verbs come before these.
    platform::Command help;
    /// Null where a verb has to follow.
    Request (*request)(CommandLine& line);
    std::vector<Verb> verbs;
};

/// Everything that the program can be asked.
Verb program() {
    const std::vector<Verb> bookmarkVerbs{
        {"make",
         {"tolvane-cli bookmark make [OPTION...] FILE",
          "Prints a new bookmark of a file in base-64",
          {{"FILE", "The file, folder or other item to bookmark"},
           {"--alias", "Prints the bytes of an alias file, to a file or a pipe"},
           helpRow},
          dashes},
         &makeRequest,
         {}},
        {"read",
         {"tolvane-cli bookmark read [OPTION...] ALIASFILE",
          "Prints the bookmark in an alias file in base-64",
          {{"ALIASFILE", "An alias file, or any file of bookmark data"},
           {"--at INDEX", "Prints the bookmark with this number in a file of any kind, as 'find' prints it"},
           {"--extract DIR", "Writes every bookmark in a file of any kind to a new file in DIR"},
           helpRow},
          dashes},
         &readRequest,
         {}},
        {"show",
         {"tolvane-cli bookmark show [OPTION...] [TEXT]",
          "Prints what a bookmark contains",
          {textRow,
           fileRow,
           atRow,
           {"--json", "Prints one JSON object: properties, header, every table and record, warnings"},
           {"--salvage",
            "Prints what is whole of a bookmark that is cut short or damaged, and what is missing"},
           helpRow},
          origins},
         &showRequest,
         {}},
        {"resolve",
         {"tolvane-cli bookmark resolve [OPTION...] [TEXT]",
          "Prints where the file of a bookmark is now",
          {textRow,
           fileRow,
           atRow,
           {"--all", "Prints a line for each bookmark in F, which can be any file, and a summary"},
           {"--json",
            "Prints one JSON object: the path, and how the file was found; with --all one per line"},
           {"--verbose",
            "Prints what 'show' prints first, and what is stored beside what was found; not with --json"},
           helpRow},
          origins},
         &resolveRequest,
         {}},
        {"find",
         {"tolvane-cli bookmark find [OPTION...] FILE...",
          "Prints every bookmark and alias record in files of any kind",
          {{"FILE", "A property list, .DS_Store, AppleDouble file, XML document, text or other file"},
           {"--recursive", "Searches the files in folders too, without following links"},
           {"--all-volumes", "Searches folders on other volumes too; with --recursive"},
           {"--json", "Prints one JSON object per line for each"},
           jobsRow,
           helpRow},
          dashes},
         &findRequest,
         {}}};
    return {
        "tolvane-cli",
        {"tolvane-cli COMMAND",
         "Shows the facts that a file system keeps about files, and decodes bookmarks",
         {helpRow, {"--version", "Prints the version and exits"}},
         "Exit status: 0 if everything requested was printed, 1 if something could not be, 2 for wrong "
         "usage."},
        nullptr,
        {{"report",
          {"tolvane-cli report [OPTION...] [FILE...]",
           "Prints the details report of each file",
           {{"FILE", "A file, folder or any other item; it is never opened"},
            {"--files0-from F", "Reads NUL-terminated names from F ('-': standard input)"},
            {"--json", "Prints one JSON object per line: the field texts, and typed facts"},
            {"--explain", "Adds what the extended attributes mean; not with --json"},
            jobsRow,
            helpRow},
           dashes},
          &reportRequest,
          {}},
         {"attributes",
          {"tolvane-cli attributes [OPTION...] [FILE...]",
           "Prints what the extended attributes of each file mean",
           {{"FILE", "A file, folder or any other item; a companion file (._name) is taken apart"},
            {"--files0-from F", "Reads NUL-terminated names from F ('-': standard input)"},
            {"--json", "Prints one JSON object per line"},
            {"--verify", "Reads the content, and compares it with checksums in the attributes"},
            {"--explain NAME", "Explains a value from elsewhere, of an attribute with this name"},
            {"--hex HEX", "The value in hexadecimal digits; with --explain"},
            {"--value-file F", "Reads the value from F ('-': standard input); with --explain"},
            jobsRow,
            helpRow},
           dashes},
          &attributesRequest,
          {}},
         {"bookmark",
          {"tolvane-cli bookmark VERB",
           "Makes, reads, shows, resolves or finds bookmarks",
           {helpRow},
           "'tolvane-cli bookmark VERB --help' describes each."},
          nullptr,
          bookmarkVerbs}}};
}

platform::Command helpOf(const Verb& verb) {
    platform::Command help = verb.help;
    std::vector<HelpRow> rows;
    std::ranges::transform(verb.verbs, std::back_inserter(rows), [](const Verb& further) {
        return HelpRow{further.name, further.help.introduction};
    });
    help.rows.insert(help.rows.begin(), rows.begin(), rows.end());
    return help;
}

bool isOption(std::string_view argument) {
    return argument.size() > 1 && argument.starts_with('-');
}

/// What is asked of a verb by what follows it. A refusal begins with the words that name the verb.
Request parse(const Verb& verb, std::span<const std::string> arguments, const std::string& words) {
    const auto refused = [&words](const std::string& sentence) {
        return UsageError{words.empty() ? sentence : words + ": " + sentence};
    };
    if (!verb.verbs.empty() && !arguments.empty() && !isOption(arguments.front())) {
        const std::string& word = arguments.front();
        const auto named = std::ranges::find(verb.verbs, word, &Verb::name);
        if (named == verb.verbs.end()) {
            std::vector<std::string_view> names;
            std::ranges::transform(verb.verbs, std::back_inserter(names), &Verb::name);
            const std::string kind = words.empty() ? "command " : words + " verb ";
            return UsageError{"there is no " + kind + word + platform::suggestion(word, names)};
        }
        return parse(*named, arguments.subspan(1), words.empty() ? word : words + " " + word);
    }
    if (!verb.verbs.empty()) {
        // What follows belongs to a verb that is not there.
        arguments = arguments.first(std::min<std::size_t>(1, arguments.size()));
    }
    auto line = platform::parseCommandLine(verb.help.rows, arguments);
    if (!line) {
        return refused(line.error());
    }
    if (line->has("--help")) {
        return Information{platform::helpText(helpOf(verb))};
    }
    if (line->has("--version")) {
        return Information{"tolvane-cli " TOLVANE_VERSION "\n"};
    }
    if (verb.request == nullptr) {
        return refused(
            words.empty() ? "no command is given"
                          : "no verb is given; there are make, read, show, resolve and find");
    }
    Request request = verb.request(*line);
    if (const auto* const wrong = std::get_if<UsageError>(&request)) {
        return refused(wrong->message);
    }
    return request;
}

} // namespace

Request parseArguments(std::span<const std::string> arguments) {
    return parse(program(), arguments, {});
}

} // namespace tolvane::cli
