#include "platform/commandline/CommandLine.h"

#include <algorithm>
#include <iterator>
#include <getopt.h>

namespace tolvane::platform {

namespace {

constexpr std::string_view shortFormEnd = ", ";

/// An option as its row in the table names it.
struct Option {
    /// With its dashes.
    std::string_view name;
    char letter = '\0';
    bool takesValue = false;
};

std::vector<Option> optionsOf(std::span<const HelpRow> rows) {
    std::vector<Option> options;
    for (const HelpRow& row : rows) {
        std::string_view term = row.term;
        if (!term.starts_with('-') || term == "--") {
            continue;
        }
        Option option;
        if (const std::size_t end = term.find(shortFormEnd); end != std::string_view::npos) {
            option.letter = term[1];
            term.remove_prefix(end + shortFormEnd.size());
        }
        option.name = term.substr(0, term.find(' '));
        option.takesValue = option.name.size() < term.size();
        options.push_back(option);
    }
    return options;
}

/// `getopt_long` over some arguments. Returns one option or name after the other, in order.
class Reader {
public:
    static constexpr int name = 1;
    static constexpr int longOption = 0;
    static constexpr int missingValue = ':';

    Reader(std::span<const Option> options, std::span<const std::string> arguments)
        : words_(arguments.begin(), arguments.end()) {
        argv_.push_back(program_.data());
        for (std::string& word : words_) {
            argv_.push_back(word.data());
        }
        argv_.push_back(nullptr);
        for (const Option& option : options) {
            longNames_.emplace_back(option.name.substr(2));
            if (option.letter != '\0') {
                letters_ += option.letter;
            }
        }
        for (std::size_t i = 0; i < options.size(); ++i) {
            const int argument = options[i].takesValue ? required_argument : no_argument;
            longOptions_.push_back({longNames_[i].c_str(), argument, nullptr, longOption});
        }
        longOptions_.push_back({});
        opterr = 0;
        optind = 0; // Has the reader begin anew.
    }

    /// `name`, `longOption`, `missingValue`, a short option's letter, '?' for other errors, or -1 at the end.
    int next() {
        place_ = static_cast<std::size_t>(std::max(optind, 1)) - 1;
        return getopt_long(
            static_cast<int>(words_.size() + 1), argv_.data(), letters_.c_str(), longOptions_.data(),
            &index_);
    }

    /// The argument that `next` looked at.
    const std::string& argument() const { return words_[place_]; }
    /// Which of the options a long one is, perhaps abbreviated.
    std::size_t index() const { return static_cast<std::size_t>(index_); }
    static std::string value() { return optarg == nullptr ? std::string() : std::string(optarg); }
    /// What follows "--", once the end is reached.
    std::span<const std::string> rest() const {
        return std::span(words_).subspan(static_cast<std::size_t>(optind) - 1);
    }

private:
    std::string program_;
    std::vector<std::string> words_;
    std::vector<char*> argv_;
    std::vector<std::string> longNames_;
    std::vector<option> longOptions_;
    /// "-": names in order; ":": a missing value is reported as such.
    std::string letters_ = "-:";
    std::size_t place_ = 0;
    int index_ = 0;
};

/// Why the reader refuses an argument, which looks like an option.
std::string refusal(const std::string& argument, std::span<const Option> options) {
    const std::string_view given = std::string_view(argument).substr(0, argument.find('='));
    const auto known = std::ranges::find(options, given, &Option::name);
    if (known == options.end()) {
        std::vector<std::string_view> names;
        std::ranges::transform(options, std::back_inserter(names), &Option::name);
        return "there is no option " + argument + suggestion(given, names);
    }
    if (known->takesValue) {
        return argument + " needs a value";
    }
    return argument.substr(0, given.size())
           + " takes no value; this was given: " + argument.substr(given.size() + 1);
}

/// Whether so many insertions, deletions, replacements or swaps of neighbours make one text the other.
bool isWithin(std::string_view a, std::string_view b, int changes) {
    const auto same = std::ranges::mismatch(a, b);
    a = {same.in1, a.end()};
    b = {same.in2, b.end()};
    if (changes == 0 || (a.empty() && b.empty())) {
        return a.empty() && b.empty();
    }
    const auto after = [](std::string_view text, std::size_t letters) {
        return text.substr(std::min(letters, text.size()));
    };
    const bool isSwapped = a.size() > 1 && b.size() > 1 && a[0] == b[1] && a[1] == b[0];
    return isWithin(after(a, 1), after(b, 1), changes - 1) || isWithin(after(a, 1), b, changes - 1)
           || isWithin(a, after(b, 1), changes - 1)
           || (isSwapped && isWithin(after(a, 2), after(b, 2), changes - 1));
}

} // namespace

std::string helpText(const Command& command) {
    std::size_t column = 0;
    for (const HelpRow& row : command.rows) {
        column = std::max(column, row.term.size() + 4);
    }
    std::string text = "Usage: ";
    text.append(command.usage).append("\n").append(command.introduction).append("\n\n");
    for (const HelpRow& row : command.rows) {
        text.append("  ").append(row.term).append(column - 2 - row.term.size(), ' ');
        for (const char c : row.help) {
            text += c;
            text.append(c == '\n' ? column : 0, ' ');
        }
        text += '\n';
    }
    return text.append("\n").append(command.closing).append("\n");
}

std::optional<std::string> CommandLine::valueOf(std::string_view option) const {
    const auto found = options.find(option);
    return found == options.end() ? std::nullopt : std::optional(found->second);
}

std::expected<CommandLine, std::string> parseCommandLine(
    std::span<const HelpRow> rows, std::span<const std::string> arguments) {
    const std::vector<Option> options = optionsOf(rows);
    Reader reader(options, arguments);
    CommandLine line;
    for (int found = reader.next(); found != -1; found = reader.next()) {
        if (found == Reader::name) {
            line.names.push_back(Reader::value());
            continue;
        }
        auto option = std::ranges::find(options, static_cast<char>(found), &Option::letter);
        if (found == Reader::longOption) {
            option = options.begin() + static_cast<std::ptrdiff_t>(reader.index());
            const std::string& argument = reader.argument();
            if (argument.substr(0, argument.find('=')) != option->name) {
                return std::unexpected(refusal(argument, options));
            }
        } else if (found == Reader::missingValue || option == options.end()) {
            return std::unexpected(refusal(reader.argument(), options));
        }
        if (!line.options.emplace(option->name, Reader::value()).second && option->takesValue) {
            return std::unexpected(std::string(option->name) + " can be given only once");
        }
        if (option->name == "--help" || option->name == "--version") {
            return line;
        }
    }
    line.namesBeforeDashes = line.names.size();
    line.names.insert(line.names.end(), reader.rest().begin(), reader.rest().end());
    return line;
}

std::string suggestion(std::string_view typed, std::span<const std::string_view> words) {
    for (int changes = 0; changes <= 2 && static_cast<std::size_t>(changes) < typed.size(); ++changes) {
        for (const std::string_view word : words) {
            if (isWithin(typed, word, changes)) {
                return "; is " + std::string(word) + " meant?";
            }
        }
    }
    return {};
}

} // namespace tolvane::platform
