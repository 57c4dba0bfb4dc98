#include "cli/Arguments.h"

#include "cli/Disguise.h"
#include "cli/Suggestion.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace tolvane::cli {

namespace {

constexpr std::string_view bookmarkCommand = "bookmark";

/// The names among the arguments that say what is to be done: the first, and after "bookmark" the second.
std::vector<std::string> commandWords(std::span<const std::string> arguments) {
    std::vector<std::string> words;
    for (const std::string& argument : arguments) {
        if (argument == "--" || words.size() == (words.empty() || words[0] == bookmarkCommand ? 2 : 1)) {
            break;
        }
        if (!argument.starts_with('-') || argument == "-") {
            words.push_back(argument);
        }
    }
    return words;
}

/// An option or a name as the parser fills it in.
struct Field {
    CLI::Option* option = nullptr;
    std::string shown;

    bool isGiven() const { return option->count() > 0; }
};

/// What both verbs that take a bookmark apart are given.
struct OriginFields {
    Field text;
    Field file;
    bool json = false;
};

/// The parser with all commands, and where it puts what it finds. It points into itself.
class CommandLine {
public:
    CommandLine() {
        program_.set_version_flag("--version", "tolvane-cli " TOLVANE_VERSION);
        program_.require_subcommand(1);
        program_.footer(
            "Exit status: 0 when everything asked for was printed, 1 when something could not be, 2 "
            "for wrong usage.");
        addReport();
        bookmark_->require_subcommand(1);
        bookmark_->footer("'tolvane-cli bookmark VERB --help' tells more of each.");
        addMake();
        addRead();
        addShow();
        addResolve();
    }
    CommandLine(const CommandLine&) = delete;
    CommandLine(CommandLine&&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;
    CommandLine& operator=(CommandLine&&) = delete;
    ~CommandLine() = default;

    Request read(std::span<const std::string> arguments) {
        const std::vector<std::string> words = commandWords(arguments);
        if (const auto error = unknownCommand(words)) {
            return *error;
        }
        const Disguise disguise(arguments, words.size());
        std::vector<std::string> shown = disguise.shown();
        std::ranges::reverse(shown); // The order in which the parser takes them.
        try {
            program_.parse(shown);
        } catch (const CLI::CallForHelp&) {
            std::string help = program_.help();
            help.erase(help.find_last_not_of('\n') + 1);
            return Information{help + "\n"};
        } catch (const CLI::CallForVersion& version) {
            return Information{std::string(version.what()) + "\n"};
        } catch (const CLI::RequiredError&) {
            return missingCommand(arguments, words);
        } catch (const CLI::ParseError& fault) {
            return UsageError{disguise.withNames(fault.what())};
        }
        return request(disguise);
    }

private:
    static std::vector<std::string> namesOf(const CLI::App& app) {
        std::vector<std::string> names;
        for (const CLI::App* const command : app.get_subcommands([](const CLI::App*) { return true; })) {
            names.push_back(command->get_name());
        }
        return names;
    }

    std::optional<UsageError> unknownCommand(const std::vector<std::string>& words) const {
        const CLI::App* app = &program_;
        std::string_view kind = "command";
        for (const std::string& word : words) {
            const std::vector<std::string> names = namesOf(*app);
            if (std::ranges::find(names, word) == names.end()) {
                std::string message = "there is no ";
                message.append(kind).append(" ").append(word);
                if (const auto meant = nearestWord(word, names)) {
                    message.append("; is ").append(*meant).append(" meant?");
                }
                return UsageError{message};
            }
            app = bookmark_;
            kind = "bookmark verb";
        }
        return std::nullopt;
    }

    static UsageError missingCommand(
        std::span<const std::string> arguments, const std::vector<std::string>& words) {
        if (!words.empty()) {
            return {words.front() + ": no verb is given; there are make, read, show and resolve"};
        }
        return {arguments.empty() ? "no command is given" : "no command is given, only " + arguments.front()};
    }

    static void addField(
        CLI::App& command, Field& field, const std::string& name, const std::string& meaning) {
        field.option = command.add_option(name, field.shown, meaning);
        field.option->type_name(name.starts_with('-') ? "F" : "");
    }

    /// A flag given once more would otherwise hide a value that it was given before.
    static CLI::Option* addFlag(
        CLI::App& command, bool& flag, const std::string& name, const std::string& meaning) {
        return command.add_flag(name, flag, meaning)->check([](const std::string& value) {
            return value == "true" ? std::string() : "takes no value; this was given: " + value;
        });
    }

    void addReport() {
        report_
            ->add_option(
                "FILE", reportNames_, "A file, folder or any other item; it is looked at, never opened")
            ->type_name("");
        addField(
            *report_, files0From_, "--files0-from",
            "Takes the names, each ended by a NUL, from F ('-': standard input)");
        addFlag(
            *report_, reportJson_, "--json",
            "Prints one JSON object a line: the field texts, and typed facts");
        report_->footer("A name that starts with a dash is given after '--'.");
    }

    void addMake() {
        addField(*make_, madeOf_, "FILE", "The item that the bookmark is to lead to");
        addFlag(*make_, alias_, "--alias", "Prints the bytes of an alias file, for a file or a pipe");
        make_->footer("A name that starts with a dash is given after '--'.");
    }

    void addRead() {
        addField(*read_, readFrom_, "ALIASFILE", "An alias file, or any file that holds bookmark data");
        read_->footer("A name that starts with a dash is given after '--'.");
    }

    static void addOrigin(CLI::App& command, OriginFields& fields) {
        addField(
            command, fields.text, "TEXT",
            "The bookmark in base-64; spaces, line feeds and tabs do not matter");
        addField(
            command, fields.file, "--file",
            "Takes the bookmark from F: an alias file, bookmark data, or base-64");
        command.footer(
            "Without TEXT and --file the bookmark is read from standard input, in any of these forms. A "
            "text that starts with a dash is given after '--'.");
    }

    void addShow() {
        addOrigin(*show_, shown_);
        addFlag(
            *show_, shown_.json, "--json",
            "Prints one JSON object: properties, header, every table and record, warnings");
    }

    void addResolve() {
        addOrigin(*resolve_, resolved_);
        CLI::Option* const json = addFlag(
            *resolve_, resolved_.json, "--json",
            "Prints one JSON object: the path, and how the item was found");
        addFlag(*resolve_, verbose_, "--verbose", "Prints what 'show' prints first, and a blank line")
            ->excludes(json);
    }

    Request request(const Disguise& disguise) const {
        if (report_->parsed()) {
            return reportRequest(disguise);
        }
        if (make_->parsed()) {
            BookmarkMakeRequest request{{}, alias_};
            return withName(disguise, madeOf_, request.file, request, "make: no file is named");
        }
        if (read_->parsed()) {
            BookmarkReadRequest request;
            return withName(disguise, readFrom_, request.aliasFile, request, "read: no alias file is named");
        }
        if (show_->parsed()) {
            BookmarkShowRequest request{{}, shown_.json};
            return withOrigin(disguise, shown_, request);
        }
        BookmarkResolveRequest request{{}, resolved_.json, verbose_};
        return withOrigin(disguise, resolved_, request);
    }

    Request reportRequest(const Disguise& disguise) const {
        ReportRequest request{{}, std::nullopt, reportJson_};
        if (files0From_.isGiven()) {
            request.files0From = disguise.withNames(files0From_.shown);
        }
        for (const std::string& shown : reportNames_) {
            auto name = disguise.nameBehind(shown);
            if (!name) {
                return notExpected(disguise, shown);
            }
            request.names.push_back(*std::move(name));
        }
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

    /// The parser takes a number below zero, and what begins with three dashes, for a name; one with a dash
    /// comes after "--", though.
    static UsageError notExpected(const Disguise& disguise, const std::string& shown) {
        return {"The following argument was not expected: " + disguise.withNames(shown)};
    }

    template <typename Asked>
    static Request withName(
        const Disguise& disguise,
        const Field& field,
        std::string& name,
        const Asked& request,
        std::string_view complaint) {
        if (!field.isGiven()) {
            return UsageError{"bookmark " + std::string(complaint)};
        }
        auto behind = disguise.nameBehind(field.shown);
        if (!behind) {
            return notExpected(disguise, field.shown);
        }
        name = *std::move(behind);
        return request;
    }

    template <typename Asked>
    static Request withOrigin(const Disguise& disguise, const OriginFields& fields, Asked request) {
        if (fields.text.isGiven()) {
            request.origin.text = disguise.nameBehind(fields.text.shown);
            if (!request.origin.text) {
                return notExpected(disguise, fields.text.shown);
            }
        }
        if (fields.file.isGiven()) {
            request.origin.file = disguise.withNames(fields.file.shown);
        }
        if (request.origin.text && request.origin.file) {
            return UsageError{"bookmark: --file takes the place of a text; both cannot be given"};
        }
        return request;
    }

    CLI::App program_{
        "Shows the facts that a file system keeps about files, and takes bookmarks apart.", "tolvane-cli"};
    CLI::App* report_ = program_.add_subcommand("report", "Prints the details report of each file");
    CLI::App* bookmark_ =
        program_.add_subcommand(std::string(bookmarkCommand), "Makes, reads, shows or resolves a bookmark");
    CLI::App* make_ = bookmark_->add_subcommand("make", "Prints a new bookmark of a file in base-64");
    CLI::App* read_ =
        bookmark_->add_subcommand("read", "Prints the bookmark that an alias file holds in base-64");
    CLI::App* show_ = bookmark_->add_subcommand("show", "Prints what a bookmark stores");
    CLI::App* resolve_ = bookmark_->add_subcommand("resolve", "Prints where the item of a bookmark is today");

    std::vector<std::string> reportNames_;
    Field files0From_;
    bool reportJson_ = false;
    Field madeOf_;
    bool alias_ = false;
    Field readFrom_;
    OriginFields shown_;
    OriginFields resolved_;
    bool verbose_ = false;
};

} // namespace

Request parseArguments(std::span<const std::string> arguments) {
    return CommandLine().read(arguments);
}

} // namespace tolvane::cli
