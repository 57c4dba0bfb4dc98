#include "cli/Disguise.h"

#include <charconv>

namespace tolvane::cli {

namespace {

constexpr std::string_view placeholder = "name#";

} // namespace

Disguise::Disguise(std::span<const std::string> arguments, std::size_t commandWords) {
    std::size_t namesSeen = 0;
    bool namesOnly = false;
    for (const std::string& argument : arguments) {
        const bool isName = namesOnly || !argument.starts_with('-') || argument == "-";
        const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string::npos;
        if (!namesOnly && argument == "--") {
            namesOnly = true;
        } else if (isName && namesSeen >= commandWords) {
            shown_.push_back(placeholderFor(argument));
        } else if (!isName && equals != std::string::npos) {
            const std::string_view value = std::string_view(argument).substr(equals + 1);
            shown_.push_back(argument.substr(0, equals + 1) + placeholderFor(value));
        } else {
            namesSeen += isName ? 1U : 0U;
            shown_.push_back(argument);
        }
    }
}

std::string Disguise::placeholderFor(std::string_view name) {
    names_.emplace_back(name);
    return std::string(placeholder) + std::to_string(names_.size() - 1);
}

std::optional<std::string> Disguise::nameBehind(std::string_view text) const {
    if (!text.starts_with(placeholder)) {
        return std::nullopt;
    }
    std::size_t number = 0;
    text.remove_prefix(placeholder.size());
    std::from_chars(text.data(), text.data() + text.size(), number);
    return names_.at(number);
}

std::string Disguise::withNames(std::string message) const {
    for (std::size_t i = names_.size(); i-- > 0;) {
        const std::string shown = std::string(placeholder) + std::to_string(i);
        const std::size_t place = message.find(shown);
        if (place != std::string::npos) {
            message.replace(place, shown.size(), names_[i]);
        }
    }
    return message;
}

} // namespace tolvane::cli
