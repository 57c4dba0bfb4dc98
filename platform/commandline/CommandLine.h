// Command lines: a table describes each command, for its help and its options.
#pragma once

#include <cstddef>
#include <expected>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvane::platform {

/// A row of a command's help. A term that begins with a dash is an option, in one of the forms "--json",
/// "--file F" (it takes a value) and "-h, --help" (it has a short form, and takes no value); any other term
/// is only explained. A help of several lines is indented as one column.
struct HelpRow {
    std::string_view term;
    std::string_view help;
};

/// What a command's help says.
struct Command {
    std::string_view usage;
    std::string_view introduction;
    std::vector<HelpRow> rows;
    std::string_view closing;
};

/// The help, ended by a line feed.
std::string helpText(const Command& command);

/// Parsed arguments. Names and values are bytes.
struct CommandLine {
    /// The values of the given options by their names, dashes included; empty for those that take none.
    std::map<std::string_view, std::string> options;
    /// What is no option: names stand between options and after "--".
    std::vector<std::string> names;
    std::size_t namesBeforeDashes = 0;

    bool has(std::string_view option) const { return options.contains(option); }
    std::optional<std::string> valueOf(std::string_view option) const;
};

/// Parses arguments by the rows of a table, which outlives the result, or returns a sentence that says what
/// is wrong. Options are not abbreviated. One with a value takes the next argument, whatever it is, and is
/// given once. Parsing stops at "--help" and "--version".
///
/// Must not be called by two threads at a time: `getopt_long` has global state.
std::expected<CommandLine, std::string> parseCommandLine(
    std::span<const HelpRow> rows, std::span<const std::string> arguments);

/// "; is report meant?" if the typed word is nearly one of the words: at most two letters inserted, missing,
/// replaced or swapped. The first of the nearest words; empty if none is near.
std::string suggestion(std::string_view typed, std::span<const std::string_view> words);

} // namespace tolvane::platform
