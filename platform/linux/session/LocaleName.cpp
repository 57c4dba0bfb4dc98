#include "platform/linux/session/LocaleName.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace tolvane::platform {

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 5> scriptModifiers{{
    {"latin", "_Latn"},
    {"cyrillic", "_Cyrl"},
    {"arabic", "_Arab"},
    {"devanagari", "_Deva"},
    {"hebrew", "_Hebr"},
}};

std::string_view scriptOf(std::string_view modifier) {
    const auto* place =
        std::ranges::find(scriptModifiers, modifier, [](const auto& entry) { return entry.first; });
    return place == scriptModifiers.end() ? std::string_view() : place->second;
}

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// Names are untrusted, and long parts make the date library crash. The limits are those of language tags.
bool canBeLocale(std::string_view name) {
    constexpr std::size_t longestName = 64;
    constexpr std::size_t longestPart = 8;
    std::size_t partLength = 0;
    for (const char c : name) {
        const bool separates = c == '_' || c == '-';
        partLength = separates ? 0 : partLength + 1;
        if ((!separates && !isLetterOrDigit(c)) || partLength > longestPart) {
            return false;
        }
    }
    return !name.empty() && name.size() <= longestName;
}

} // namespace

std::string icuLocaleName(std::string_view environmentName) {
    const auto modifierStart = std::min(environmentName.find('@'), environmentName.size());
    const auto modifier = environmentName.substr(std::min(modifierStart + 1, environmentName.size()));
    auto name = environmentName.substr(0, modifierStart);
    name = name.substr(0, name.find('.'));
    if (name == "C" || name == "POSIX" || !canBeLocale(name)) {
        return "en_US_POSIX";
    }
    const auto languageEnd = std::min(name.find('_'), name.size());
    std::string result(name.substr(0, languageEnd));
    result += scriptOf(modifier);
    result += name.substr(languageEnd);
    if (modifier == "valencia") {
        result += "_VALENCIA";
    }
    return result;
}

} // namespace tolvane::platform
