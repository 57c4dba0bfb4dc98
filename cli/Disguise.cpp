#include "cli/Disguise.h"

#include <algorithm>
#include <charconv>

namespace tolvane::cli {

Disguise::Disguise(std::span<const std::string> arguments, std::size_t commandWords) {
    // Nothing that was given may pass for a placeholder, in what the parser reads or in what it says.
    while (std::ranges::any_of(
        arguments, [this](const std::string& argument) { return argument.contains(placeholder_); })) {
        placeholder_ += '#';
    }
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
    return placeholder_ + std::to_string(names_.size() - 1);
}

std::optional<std::string> Disguise::nameBehind(std::string_view text) const {
    if (!text.starts_with(placeholder_)) {
        return std::nullopt;
    }
    std::size_t number = 0;
    text.remove_prefix(placeholder_.size());
    std::from_chars(text.data(), text.data() + text.size(), number);
    return names_.at(number);
}

std::string Disguise::withNames(const std::string& text) const {
    std::string told;
    std::string_view rest = text;
    for (std::size_t at = rest.find(placeholder_); at != std::string_view::npos;
         at = rest.find(placeholder_)) {
        told += rest.substr(0, at);
        rest.remove_prefix(at + placeholder_.size());
        std::size_t number = 0;
        const char* const end = std::from_chars(rest.data(), rest.data() + rest.size(), number).ptr;
        told += names_.at(number);
        rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    }
    return told.append(rest);
}

} // namespace tolvane::cli
